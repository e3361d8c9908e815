#include "review/Capture.h"
#include "tests/review/SampleMacros.h"

namespace tessaly {
namespace {

// Commands on two keys, the first one twice, and of what is not asked for.
Macro macro(const std::string& first = "0.5", const std::string& fid = "QMF1.ME1.KEY1.CLIP.SET") {
  const std::string half = parameter("VALUE", "0.5");
  return *Macro::read(macroOf(command(fid, "<param name=\"X\"/>" + parameter("VALUE", first)) +
                              command("QMF1.ME1.KEY2.CLIP.SET", half) +
                              command("QMF1.ME1.KEY1.CLIP.SET", half) + classic("24 10 05 03 c8 ") +
                              command("CLIP", half) + command("QMF1.ME1.KEY1.CLIP.INC", half) +
                              command("QMF1.NO.SUCH", half) + command("QMF1.ME1.KEY1.CLIP.SET") +
                              command("QMF1.ME1.TRANSI.SOURCE.SET", parameter("INPUT", "5"))));
}

// Each row that waits, is missing, is the same, differs or has changed, what is ticked, and all counts.
std::string shown(const Capture& capture) {
  std::string text;
  for (const Capture::Row& row : capture.rows())
    if (row.state != Capture::State::kCannot)
      text += "wmsdc"[static_cast<std::size_t>(row.state)] + row.old + (row.now ? '>' + *row.now : "") +
              (row.ticked ? " " : "- ");
  const auto [asked, waiting, missing, came, differ, ticked, changed] = capture.counts();
  for (const std::size_t count : {asked, waiting, missing, came, differ, ticked, changed})
    text += std::to_string(count);
  for (const auto& [command, value] : capture.edit().values)
    text += ' ' + std::to_string(command) + '=' + value;
  return text + (capture.complete() ? " whole" : "");
}

using CaptureTest = SampleMacrosTest;

TEST_F(CaptureTest, WhatStandsInTheWayOfAQuestion) {
  const Capture capture(macro(), {-1, 9, 8, 7, 6, 5, 4, 3, 0}, dictionary());
  std::string told;
  for (const Capture::Row& row : capture.rows())
    told += std::to_string(row.command) + '.' + std::to_string(row.parameter) + ' ' + row.name + ' ' +
            std::to_string(static_cast<int>(row.obstacle)) + '\n';
  EXPECT_EQ(told,
            "8.0 QMF1.ME1.PST.SOURCE 4\n7.-1 QMF1.ME1.KEY1.CLIP 5\n6.0  3\n5.0  3\n4.0  2\n3.0  1\n"
            "0.1 QMF1.ME1.KEY1.CLIP 0\n");
}

TEST_F(CaptureTest, ARowWaitsForItsValueAndFollowsItsMacro) {
  Capture capture(macro(), {}, dictionary());
  const auto then = [&](bool holds, const char* rows) {
    EXPECT_TRUE(holds) << rows;
    EXPECT_EQ(shown(capture), rows);
  };
  const std::string one = "QMF1.ME1.KEY1.CLIP", two = "QMF1.ME1.KEY2.CLIP";
  then(capture.ask() == std::vector{one, two, one}, "w0.5 w0.5 w0.5 3300000");
  then(!capture.answer(one, ""), "w0.5 w0.5 w0.5 3300000");  // asked for twice
  then(capture.answer(one, "0.7"), "d0.5>0.7 w0.5 d0.5>0.7 3102220 0=0.7 2=0.7");
  then(!capture.answer(one, "0.8"), "d0.5>0.7 w0.5 d0.5>0.7 3102220 0=0.7 2=0.7");  // the first one stays
  then(!capture.answer("QMF1.ME1.KEY3.CLIP", "1"), "d0.5>0.7 w0.5 d0.5>0.7 3102220 0=0.7 2=0.7");
  then(!capture.tick(1, false) && !capture.tick(3, false), "d0.5>0.7 w0.5 d0.5>0.7 3102220 0=0.7 2=0.7");
  then(capture.tick(2, false), "d0.5>0.7 w0.5 d0.5>0.7- 3102210 0=0.7");
  capture.giveUp();
  then(capture.ask() == std::vector{two}, "d0.5>0.7 w0.5 d0.5>0.7- 3102210 0=0.7");
  capture.giveUp();
  then(true, "d0.5>0.7 m0.5 d0.5>0.7- 3012210 0=0.7");
  then(capture.follow(macro("0.7")), "s0.7>0.7 m0.5 d0.5>0.7- 3012100");  // taken over
  then(!capture.follow(macro("0.7")), "s0.7>0.7 m0.5 d0.5>0.7- 3012100");
  then(capture.follow(macro()), "d0.5>0.7 m0.5 d0.5>0.7- 3012210 0=0.7");  // and taken back
  then(capture.follow(macro("0.6")), "c0.5>0.7 m0.5 d0.5>0.7- 3012101");
  then(!capture.follow(macro("0.5", "QMF1.ME1.KEY3.CLIP.SET")), "c0.5>0.7 m0.5 d0.5>0.7- 3012101");
  then(capture.follow({}), "c0.5>0.7 c0.5 c0.5>0.7- 3002003");
  then(capture.answer(two, "0.5"), "c0.5>0.7 c0.5>0.5 c0.5>0.7- 3003003 whole");
  capture.tickAll(true);  // none of them differs
  then(capture.follow(macro()), "d0.5>0.7 s0.5>0.5 d0.5>0.7- 3003210 0=0.7 whole");
  capture.tickAll(true);
  then(true, "d0.5>0.7 s0.5>0.5 d0.5>0.7 3003220 0=0.7 2=0.7 whole");
  EXPECT_EQ(capture.command(2).fid, one + ".SET");
}

}  // namespace
}  // namespace tessaly
