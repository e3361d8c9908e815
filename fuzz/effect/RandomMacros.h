#pragma once

#include <random>
#include <string>
#include <vector>

#include "classic/ClassicGroups.h"
#include "dictionary/InterfaceFile.h"
#include "panelsim/CommandRun.h"
#include "platform/Text.h"
#include "review/MacroEffect.h"
#include "tests/support/BuildPaths.h"
#include "values/Destination.h"

// Random macros over the sample site, and what is told of their effect set against what the simulated panel's
// own code makes of its values. Each check gives what is wrong, or nothing.
namespace tessaly {

struct SampleDictionary {
  SampleDictionary() {
    loadFunctionDictionary(root, functions, {});
    for (int cd = 0; cd < 256; ++cd) {
      for (int co = 0; co < 256; ++co) {
        const auto codes = std::pair(static_cast<std::uint8_t>(cd), static_cast<std::uint8_t>(co));
        if (std::filesystem::exists(root.resolve(decodingListPath(codes.first, codes.second))))
          units.push_back(codes);
      }
    }
  }
  SiteRoot root{sourcePath("site")};
  FunctionDictionary functions;
  std::vector<std::pair<std::uint8_t, std::uint8_t>> units;  // with a decoding list
};

class RandomMacros {
 public:
  struct Seen {
    std::size_t sets = 0, steps = 0, acts = 0, untold = 0;
  };

  RandomMacros(const SampleDictionary& sample, unsigned seed) : sample_(sample), random_(seed) {
    for (std::size_t& function : pool_) function = below(sample_.functions.functionCount());
    for (std::size_t i = 0; i < kPool; i += 2) pool_[i + 1] = siblingOf(pool_[i]);
    for (auto& unit : units_) unit = sample_.units[below(sample_.units.size())];
  }

  std::string check(bool stepByStep, Seen& seen) {
    MacroCommands commands(below(40));
    for (MacroCommand& command : commands) command = below(3) == 0 ? anyClassic() : anyCommand();
    CurrentValues values(sample_.functions);
    const MacroEffect effect(commands, {sample_.functions, lists_},
                             [&](const std::string& name) { return values.of(name); });
    CommandRun run(sample_.functions, lists_, values);
    for (int i = 0; i < effect.commandCount(); ++i) {
      const auto result = run.carryOut(commands[static_cast<std::size_t>(i)]);
      count(effect.effect(i).what, seen);
      for (const auto& [name, value] : result.values)
        if (!changes(effect, i, name)) return told(commands, i, name + " is not told of");
      if (std::string wrong = stepByStep ? compare(effect, i + 1, values) : ""; !wrong.empty())
        return told(commands, i, wrong);
    }
    const std::string wrong = compare(effect, effect.commandCount(), values);
    return wrong.empty() ? wrong : told(commands, effect.commandCount() - 1, wrong);
  }

 private:
  static constexpr std::size_t kPool = 8;

  std::size_t below(std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_);
  }
  std::uint8_t byte() { return static_cast<std::uint8_t>(below(256)); }

  // The step of what a function sets, or what sets a step, where there is one.
  std::size_t siblingOf(std::size_t function) {
    std::string name(sample_.functions.name(function));
    const bool steps = name.ends_with(".INC");
    if (!steps && !name.ends_with(".SET")) return function;
    const auto other = sample_.functions.find(name.replace(name.size() - 3, 3, steps ? "SET" : "INC"));
    return other ? other->index() : function;
  }

  MacroCommand anyCommand() {
    const FunctionRecord function = sample_.functions.function(pool_[below(kPool)]);
    const FunctionTemplate& known = function.definition();
    MacroCommand command{
        std::string(Destination::at(static_cast<int>(below(2))).prefix()), "1", "", "", "", {}};
    if (below(60) == 0) command.fid = below(2) == 0 ? "QMF7." : "";
    command.fid += function.name();
    if (below(60) == 0) command.fid += "X";
    const auto add = [&](const std::string& name, const std::string& value) {
      MacroParameter parameter{name, value};
      if (below(40) == 0) parameter.value = std::vector{"", "x", "1e400", " 1", "-3"}[below(5)];
      if (below(40) == 0) parameter.hasValue = false, parameter.value.clear();
      if (below(60) == 0) parameter.name = "NOTHING";
      if (below(30) != 0) command.parameters.push_back(parameter);
    };
    const bool steps = function.incremental();
    for (const auto& one : known.enums)
      add(one.name, one.values.empty() ? "0" : one.values[below(one.values.size())].value);
    for (const auto& one : known.integers) add(one.name, std::to_string(anyBetween(one.min, one.max)));
    for (const auto& one : known.floats)
      add(one.name, steps
                        ? std::to_string(anyBetween(-2048, 2047))
                        : format("%f", static_cast<double>(anyBetween(0, 1000)) / 1000 * (one.max - one.min) +
                                           one.min));
    for (const auto& one : known.inputs) add(one.name, std::to_string(below(100)));
    for (const auto& one : known.timecodes) add(one.name, std::to_string(below(1000)));
    return command;
  }

  std::int64_t anyBetween(std::int64_t low, std::int64_t high) {
    if (below(20) == 0) high += 100;
    return std::uniform_int_distribution<std::int64_t>(std::min(low, high), std::max(low, high))(random_);
  }

  MacroCommand anyClassic() {
    const auto [cd, co] = units_[below(std::size(units_))];
    const auto list = lists_.list(cd, co);
    const KeywordEntry& entry = list->entries()[below(std::min<std::size_t>(list->entries().size(), 4))];
    std::vector<std::uint8_t> bytes;
    for (const ParameterDescriptor& parameter : entry.parameters) {
      const std::size_t width = parameter.rowCount > 0 ? 0 : below(5);
      if (parameter.rowCount > 0) {
        const std::uint32_t value = entry.rows[parameter.firstRow + below(parameter.rowCount)].value;
        const std::size_t size = parameter.type == ParameterType::kByteEnum   ? 1
                                 : parameter.type == ParameterType::kWordEnum ? 2
                                                                              : 4;
        for (std::size_t i = 0; i < size; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
      }
      for (std::size_t i = 0; i < width; ++i)
        bytes.push_back(below(2) == 0 ? byte() : static_cast<std::uint8_t>(below(5)));
    }
    for (std::size_t more = below(4); more > 0; --more) bytes.push_back(byte());
    if (bytes.size() > 20) bytes.resize(20);
    if (below(8) == 0 && !bytes.empty()) bytes.back() = below(2) == 0 ? 0xFF : byte();
    constexpr std::uint8_t kActions[] = {0x20, 0xA0, 0x40, 0x40, 0xC0, 0x60, 0xE0, 0x80};
    ClassicCommand command;
    command.build(kActions[below(std::size(kActions))], cd, co, below(30) == 0 ? byte() : entry.keyword,
                  bytes);
    std::string text = command.text();
    if (below(30) == 0) text.resize(below(text.size() + 1));
    return {"QMF1.NCSCOMMAND", "1", "", "", "", {{"CMD", text}}};
  }

  static void count(CommandEffect::What what, Seen& seen) {
    switch (what) {
      case CommandEffect::What::kSets:
        ++seen.sets;
        break;
      case CommandEffect::What::kSteps:
        ++seen.steps;
        break;
      case CommandEffect::What::kActs:
        ++seen.acts;
        break;
      case CommandEffect::What::kUntold:
        ++seen.untold;
        break;
    }
  }

  static bool changes(const MacroEffect& effect, int command, const std::string& name) {
    for (const ValueChange& change : effect.changes(command))
      if (effect.values()[static_cast<std::size_t>(change.value)].name == name) return true;
    return false;
  }

  // What is known is what the panel has; anything else has no value there, or one that no step leads on from.
  static std::string compare(const MacroEffect& effect, int step, const CurrentValues& values) {
    for (std::size_t i = 0; i < effect.values().size(); ++i) {
      const std::string& name = effect.values()[i].name;
      const ValueState& state = effect.at(static_cast<int>(i), step);
      const auto value = values.of(name);
      if (state.kind == ValueState::Kind::kKnown && value != state.stored)
        return name + " is " + value.value_or("nothing") + ", not " + state.stored;
      if (state.kind != ValueState::Kind::kKnown && value && !wasLost(effect, static_cast<int>(i), step))
        return name + " is " + *value + ", and told to be unknown";
    }
    return {};
  }

  // A step came upon what is no value.
  static bool wasLost(const MacroEffect& effect, int value, int step) {
    for (int command = 0; command < step; ++command) {
      for (const ValueChange& change : effect.changes(command))
        if (change.value == value && change.after.kind == ValueState::Kind::kUnknown &&
            effect.effect(command).why.find("before") != std::string::npos)
          return true;
    }
    return false;
  }

  static std::string told(const MacroCommands& commands, int last, const std::string& wrong) {
    std::string text = wrong + " after";
    for (int i = 0; i <= last; ++i) {
      const MacroCommand& command = commands[static_cast<std::size_t>(i)];
      text += "\n  " + command.fid;
      for (const MacroParameter& parameter : command.parameters)
        text += " " + parameter.name + (parameter.hasValue ? "=\"" + parameter.value + "\"" : "");
    }
    return text;
  }

  const SampleDictionary& sample_;
  DecodingLists lists_{sample_.root};
  std::mt19937 random_;
  std::size_t pool_[kPool] = {};
  std::pair<std::uint8_t, std::uint8_t> units_[2] = {};
};

}  // namespace tessaly
