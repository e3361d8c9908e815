#pragma once

#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "model/MacroFile.h"
#include "review/FolderCheck.h"
#include "values/Timecode.h"

namespace tessaly {

// Faults planted one by one, at a place by chance, in the macros of a site that has none.
class PlantedFaults {
 public:
  struct Result {
    CheckRule rule;
    bool found;
    std::string where;
  };

  PlantedFaults(const SiteRoot& root, const std::string& folder, const FunctionDictionary& dictionary,
                DecodingLists& lists)
      : dictionary_(dictionary), check_({dictionary, lists}) {
    for (const MacroFolder& macros : macroFoldersUnder(root, folder))
      for (const std::string& path : macros.files) {
        if (auto macro = readMacro(root, path); macro && macro->commands().size() > 1)
          macros_.push_back(*macro);
      }
  }

  // The fault of that number, made of the number alone. Nothing when by chance no place was found for it.
  std::optional<Result> plant(unsigned number) {
    random_.seed(number);
    const auto rule = static_cast<CheckRule>(number % kCheckRules);
    if (rule == CheckRule::kFileName || rule == CheckRule::kNameTwice) return std::nullopt;  // of folders
    constexpr int kTries = 3000;
    for (int i = 0; i < kTries; ++i) {
      const Macro& macro = macros_[below(macros_.size())];
      commands_ = macro.commands();
      at_ = below(commands_.size());
      name_ = "Planted";
      bytes_.clear();
      if (!spoil(rule)) continue;
      if (bytes_.empty()) bytes_ = written();
      return Result{rule, finds(rule), std::to_string(at_) + ' ' + commandText()};
    }
    return std::nullopt;
  }

 private:
  static constexpr std::size_t kMost = 1500;  // commands of a macro, so that thousands are copied quickly

  std::size_t below(std::size_t bound) { return random_() % bound; }
  MacroCommand& command() { return commands_[std::min(at_, commands_.size() - 1)]; }
  std::string commandText() { return commands_.empty() ? std::string() : command().fid; }

  bool finds(CheckRule rule) {
    const auto macro = Macro::read(bytes_);
    if (!macro) return rule == CheckRule::kUnreadable;
    const Findings findings = check_.check(*macro);
    const bool whole = rule < CheckRule::kDestination;
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
      return finding.rule == rule && finding.command == (whole ? -1 : static_cast<int>(at_));
    });
  }

  static std::string attribute(const char* name, std::string_view value) {
    std::string text = std::string(" ") + name + "=\"";
    for (const char c : value)
      text += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '"' ? "&quot;" : std::string(1, c);
    return text + '"';
  }

  std::string written() const {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><macro" + attribute("name", name_) + "><data>";
    for (const MacroCommand& one : commands_) {
      text += "<cmd" + attribute("fid", one.fid) + attribute("workplace", one.workplace) + '>';
      for (const MacroParameter& parameter : one.parameters)
        text += "<param" + attribute("name", parameter.name) +
                (parameter.hasValue ? attribute("value", parameter.value) : std::string()) + "/>";
      text += "</cmd>";
    }
    return text + "</data></macro>";
  }

  // A parameter of the command that is of one of these lists, with its stored value.
  template <typename Use>
  bool eachParameter(const Use& use) {
    if (command().classic() || command().parameters.empty()) return false;
    const auto function = dictionary_.find(command().functionName());
    return function && use(function->definition(), command().parameters[below(command().parameters.size())]);
  }

  // The bytes of a classic command that has so many parameters at least.
  std::optional<ClassicCommand> classic(std::size_t parameters = 0) {
    ClassicCommand decoded;
    if (!command().classic() || !decoded.decodeText(command().parameters.front().value) ||
        decoded.parameters().size() < parameters)
      return std::nullopt;
    return decoded;
  }
  bool putClassic(std::string text) {
    command().parameters.front().value = std::move(text);
    return true;
  }
  bool build(std::uint8_t action, const ClassicCommand& from, std::uint8_t kw,
             std::vector<std::uint8_t> bytes) {
    ClassicCommand built;
    built.build(action, from.cd(), from.co(), kw, bytes);
    return putClassic(built.text());
  }

  bool spoil(CheckRule rule);
  bool spoilFile(CheckRule rule);
  bool spoilValue(CheckRule rule);
  bool spoilClassic(CheckRule rule);
  bool spoilSequence(CheckRule rule);

  const FunctionDictionary& dictionary_;
  MacroCheck check_;
  std::vector<Macro> macros_;
  std::mt19937 random_;
  // The macro in work, and what is to be wrong with its command `at_`.
  MacroCommands commands_;
  std::size_t at_ = 0;
  std::string name_, bytes_;
};

inline bool PlantedFaults::spoil(CheckRule rule) {
  using enum CheckRule;
  MacroCommand& one = command();
  const std::size_t dot = one.fid.find('.');
  switch (rule) {
    case kDestination:
      one.fid.replace(0, dot, below(2) == 0 ? "QMF5" : below(2) == 0 ? "qmf1" : "");
      return true;
    case kWorkplace: {
      const char* const none[] = {"0", "9", "", "one", "01"};
      one.fid.replace(0, dot, "PANEL");
      one.workplace = none[below(std::size(none))];
      return true;
    }
    case kUnknownFunction:
      one.fid.insert(dot + 1 + below(one.fid.size() - dot), 1, '_');
      return !dictionary_.find(one.functionName()) && !one.classic();
    case kUnknownParameter:
      return eachParameter([](const FunctionTemplate&, MacroParameter& parameter) {
        parameter.name += 'X';
        return true;
      });
    case kParameterTwice:
      if (one.parameters.empty()) return false;
      one.parameters.push_back(one.parameters.front());
      return true;
    case kEmptyParameter: {
      if (one.classic() || one.parameters.size() != 1) return false;
      if (below(2) == 0)
        one.parameters.front().value.clear();
      else
        one.parameters.clear();
      return true;
    }
    default:
      return spoilFile(rule) || spoilValue(rule) || spoilClassic(rule) || spoilSequence(rule);
  }
}

inline bool PlantedFaults::spoilFile(CheckRule rule) {
  using enum CheckRule;
  switch (rule) {
    case kUnreadable:
      bytes_ = written();
      bytes_.resize(bytes_.size() / 2 + below(bytes_.size() / 2));
      return bytes_.size() > 60;
    case kEncoding:
      name_ += "\xFC";
      return true;
    case kNoName:
      name_.clear();
      return true;
    case kNoCommands:
      commands_.clear();
      return true;
    default:
      return false;
  }
}

inline bool PlantedFaults::spoilValue(CheckRule rule) {
  using enum CheckRule;
  return eachParameter([&](const FunctionTemplate& definition, MacroParameter& parameter) {
    std::string& value = parameter.value;
    const auto* const whole = parameterNamed(definition.integers, parameter.name);
    const auto* const real = parameterNamed(definition.floats, parameter.name);
    switch (rule) {
      case kNumber:
        if (!whole && !real) return false;
        value = below(2) == 0 ? value + "x" : "," + value;
        return true;
      case kLimits:
        if (whole && whole->min != whole->max)
          value = std::to_string(std::int64_t{whole->max} + 1 + static_cast<int>(below(9)));
        else if (real && command().fid.ends_with(".INC"))
          value = below(2) == 0 ? "2048" : "-2049";
        else if (real && real->min != real->max)
          value = std::to_string(real->min - 1);
        else
          return false;
        return true;
      case kChoice:
        value += "?";
        return parameterNamed(definition.enums, parameter.name) != nullptr;
      case kSource:
        value = below(2) == 0 ? "97" : "INPUT5";
        return parameterNamed(definition.inputs, parameter.name) != nullptr;
      case kTimecode: {
        const Timecode frames25{.hours = 1, .frames = 25}, hours24{.hours = 24};
        value = below(2) == 0 ? frames25.stored() : below(2) == 0 ? hours24.stored() : "1:2:3";
        return parameterNamed(definition.timecodes, parameter.name) != nullptr;
      }
      default:
        return false;
    }
  });
}

inline bool PlantedFaults::spoilClassic(CheckRule rule) {
  using enum CheckRule;
  if (rule < kClassicText || rule > kClassicShort) return false;
  const auto old = classic(rule == kClassicShort ? 1 : 0);
  if (!old) return false;
  const std::string text = old->text();
  const std::vector<std::uint8_t> bytes(old->parameters().begin(), old->parameters().end());
  switch (rule) {
    case kClassicText:
      return putClassic(below(3) == 0   ? text.substr(0, text.size() - 1)
                        : below(2) == 0 ? text.substr(3) + " "
                                        : "");
    case kClassicReadBack: {
      std::string longText = "3f 00 28 14 01 01 ";
      for (int i = 0; i < 40; ++i) longText += "41 ";
      return putClassic(longText);
    }
    case kClassicAction:
      return build(0x80, *old, old->kw(), bytes);
    case kClassicList: {
      ClassicCommand built;
      built.build(0x20, 0xE0, old->co(), old->kw(), bytes);
      return putClassic(built.text());
    }
    case kClassicKeyword:
      return build(old->action(), *old, 0xFB, bytes);
    case kClassicShort:
      return !old->does(ClassicAction::kRead) && build(old->action(), *old, old->kw(), {});
    default:
      return false;
  }
}

inline bool PlantedFaults::spoilSequence(CheckRule rule) {
  using enum CheckRule;
  if (rule < kSpill) return false;
  const MacroCommand one = command();
  const auto here = commands_.begin() + static_cast<std::ptrdiff_t>(at_);
  const auto function = one.classic() ? std::nullopt : dictionary_.find(one.functionName());
  switch (rule) {
    case kSpill:
      if (!function || function->incremental() || one.parameters.empty()) return false;
      for (MacroParameter& parameter : command().parameters)
        parameter.hasValue = false, parameter.value.clear();
      commands_.insert(here + 1, one);
      return true;
    case kRepeated:
      commands_.insert(here + 1, one);
      ++at_;
      return true;
    case kSetAgain: {
      if (!function || function->incremental() || one.parameters.size() != 1 || !one.fid.ends_with(".SET"))
        return false;
      commands_.insert(here, one);
      command().parameters.front().value += "0";
      return true;
    }
    default:
      return false;
  }
}

}  // namespace tessaly
