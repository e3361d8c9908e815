#pragma once

#include <span>

#include "review/CheckKnowledge.h"

// The rules that look at commands.
namespace tessaly {

// A command and what is known of it.
struct LookedCommand {
  const MacroCommand& command;
  int number;
  const CheckedFunction* function = nullptr;  // null for an unknown one, and a classic command
  const ClassicJudgement* classic = nullptr;  // of a classic command

  // It gives values, and does nothing else.
  [[nodiscard]] bool setsOnly() const;
};

// Where a rule tells what it finds.
class Told {
 public:
  Told(Findings& findings, const RulesOff& off) : findings_(findings), off_(off) {}
  // Null when the rule is off.
  Finding* add(CheckRule rule, int command, Said wrong, Said right = {});

 private:
  Findings& findings_;
  const RulesOff& off_;
};

using CommandRule = void (*)(CheckKnowledge& knowledge, const LookedCommand& looked, Told& told);

// Each looks at one command alone, at all of its parameters.
[[nodiscard]] std::span<const CommandRule> commandRules();

// Those of commands that follow each other: what they remember of a macro.
class SequenceRules {
 public:
  explicit SequenceRules(const MacroCommands& commands) : commands_(commands) {}
  // In the order of the commands.
  void look(const LookedCommand& looked, Told& told);

 private:
  void spill(const LookedCommand& looked, Told& told);
  void repeated(const LookedCommand& looked, Told& told);
  void setAgain(const LookedCommand& looked, Told& told);
  [[nodiscard]] int takerFrom(int number);
  [[nodiscard]] int& lastSet(const LookedCommand& looked);

  const MacroCommands& commands_;
  int taker_ = 0;                                      // the first command from there on that takes a value
  int lastActed_ = -1;                                 // the last command that does more than set values
  std::unordered_map<std::string_view, int> actedOn_;  // the same for what shares a beginning of the name
  std::unordered_map<std::string_view, int> set_;      // by fid, where it was set last
  std::unordered_map<std::string, int> classicSet_;
};

}  // namespace tessaly
