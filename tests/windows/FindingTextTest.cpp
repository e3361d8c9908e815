// What findings say in the window, in every language whose sentences keep their marks.
#include <gtest/gtest.h>

#include "windows/FindingText.h"

namespace tessaly {
namespace {

// A value that looks like a mark, as a hostile macro may hold one, is no place for the next value.
TEST(FindingText, SaysWhatTheTwinSaysButCountsCommandsFromOne) {
  for (std::size_t saying = 1; saying < kSayings.size(); ++saying) {
    Finding finding{.rule = CheckRule::kChoice, .wrong = {static_cast<Saying>(saying)}};
    for (const char* mark : {"%1", "%2"})
      if (kSayings[saying].find(mark) != std::string_view::npos) finding.wrong.values.emplace_back("%2 %1");
    finding.right = finding.wrong;
    finding.meant = "%1";
    EXPECT_EQ(wrongInWindow(finding).toStdString(), wrongText(finding)) << saying;
    EXPECT_EQ(rightInWindow(finding).toStdString(), rightText(finding)) << saying;
  }
  const Finding again{.rule = CheckRule::kRepeated, .command = 4, .wrong = {Saying::kSameAs}, .other = 3};
  EXPECT_EQ(wrongInWindow(again), "the same command as 4");
  EXPECT_EQ(wrongText(again), "the same command as 3");
  Finding note{.rule = CheckRule::kNoCommands, .severity = Severity::kNote, .wrong = {Saying::kNoCommands}};
  EXPECT_EQ(findingText(note), "note: there are no commands");
  note.parameter = "P", note.meant = "1";
  EXPECT_EQ(findingText(note), "note: P: there are no commands; right: 1");
  const std::pair<Severity, const char*> kinds[] = {
      {Severity::kError, "1 errors"}, {Severity::kWarning, "1 warnings"}, {Severity::kNote, "1 notes"}};
  for (const auto& [severity, text] : kinds) EXPECT_EQ(countText({{.severity = severity}}), text);
  EXPECT_EQ(countText({note, {.severity = Severity::kError}, note}), "1 errors, 2 notes");
}

}  // namespace
}  // namespace tessaly
