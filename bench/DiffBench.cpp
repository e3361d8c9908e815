#include <algorithm>
#include <random>
#include <tinyxml.h>

#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "review/MacroDiff.h"

namespace tessaly::bench::diff_rows {
namespace {

constexpr int kCommands = 10'000;
constexpr int kChanges = 100;  // 1 %
constexpr const char* kBase = "c:\\base.mac";
constexpr const char* kEdited = "c:\\edited.mac";
constexpr const char* kShuffled = "c:\\shuffled.mac";
constexpr double kMostSeconds = 0.1;

// 10,000 commands of 10,000 functions; the same with a hundred of them changed, taken out, put in and moved;
// and in an order by chance, which no alignment can shorten.
struct Sample : FunctionSample {
  Sample() {
    std::vector<std::string> commands;
    for (int number = 0; number < kCommands; ++number) commands.push_back(command(number, number % 100));
    write(kBase, commands);
    std::vector<std::string> edited = commands;
    std::mt19937 random(1);
    for (int i = 0; i < kChanges; ++i) {
      const auto at = edited.begin() + static_cast<std::ptrdiff_t>(random() % edited.size());
      if (i % 4 == 0) edited.erase(at);
      if (i % 4 == 1) edited.insert(at, command(i, 200));
      if (i % 4 == 2) *at = replaceAll(*at, "value=\"0.", "value=\"0.9");
      if (i % 4 == 3) std::rotate(edited.begin() + (at - edited.begin()) / 2, at, at + 1);
    }
    write(kEdited, edited);
    std::shuffle(commands.begin(), commands.end(), random);
    write(kShuffled, commands);
  }

  std::string command(int number, int value) const {
    return FunctionSample::command(static_cast<std::size_t>(number) * 7, number % 4 + 1, value);
  }

  void write(const char* path, const std::vector<std::string>& commands) const {
    std::string text = "<macro name=\"Bench\">\n    <data>\n";
    for (const std::string& one : commands) text += one;
    require(writeFile(root, path, text + "    </data>\n</macro>\n"));
  }
};

Sample& sample() {
  static Sample made;
  return made;
}

void prepare() { static_cast<void>(sample()); }

void compare(const char* other) {
  auto a = readMacro(sample().root, kBase), b = readMacro(sample().root, other);
  require(a && b);
  const MacroDiff diff(*std::move(a), *std::move(b), &sample().dictionary);
  require(!diff.identical() && diff.minimal());
  keep(&diff);
}

void bareLoad(const char* other) {
  for (const char* path : {kBase, other}) {
    TiXmlDocument document;
    require(document.LoadFile(sample().root.resolve(path).c_str()));
    keep(&document);
  }
}

Pair beside(const char* name, const char* other, double goal) {
  return {.name = name,
          .measured = [other] { compare(other); },
          .limit = [other] { bareLoad(other); },
          .goal = goal,
          .prepare = prepare,
          .oneThread = true};
}

const bool kRegistered[] = {
    addPair(beside("read and compare 10,000 commands, 1 % different, beside LoadFile of both", kEdited, 2)),
    addPair(
        beside("read and compare 10,000 commands with the same shuffled, beside LoadFile", kShuffled, 2.5)),
    addFigure({.name = "the same: read and compare, 1 % different",
               .unit = kSeconds,
               .take =
                   [] {
                     prepare();
                     return Figures{secondsOf([] { compare(kEdited); }), kMostSeconds};
                   }}),
};

}  // namespace
}  // namespace tessaly::bench::diff_rows
