#include "review/CommandMeaning.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <deque>
#include <unordered_map>
#include <utility>

#include "platform/Text.h"
#include "values/Timecode.h"

namespace tessaly {
namespace {

using What = CommandChange::What;

constexpr char kNumber = '#';  // begins the form of a value that was read in its unit
constexpr char kText = '=';    // and of one that was not
constexpr int kTimecodeNumbers = 4;
constexpr std::size_t kTimecodeDigits = 2;  // of each number

constexpr std::pair<What, std::string MacroCommand::*> kFields[] = {
    {What::kWorkplace, &MacroCommand::workplace},
    {What::kGroup, &MacroCommand::group},
    {What::kModule, &MacroCommand::module},
    {What::kWidget, &MacroCommand::widget},
    {What::kUnread, &MacroCommand::unread}};

// What is no timecode, or one whose packed form is another one, is nothing.
std::optional<std::uint32_t> packedTimecode(std::string_view text) {
  if (text.find(':') == text.npos) return exactNumber<std::uint32_t>(text);
  int numbers = 1;
  std::size_t digits = 0;
  for (const char c : text) {
    const bool separator = c == ':' || (c == '.' && numbers + 1 == kTimecodeNumbers);
    if (separator ? digits == 0 : c < '0' || c > '9' || digits == kTimecodeDigits) return std::nullopt;
    numbers += separator ? 1 : 0;
    digits = separator ? 0 : digits + 1;
  }
  if (numbers != kTimecodeNumbers || digits == 0) return std::nullopt;
  const Timecode timecode = Timecode::fromStored(text);
  if (Timecode::fromPacked(timecode.packed()) != timecode) return std::nullopt;
  return timecode.packed();
}

template <typename Number>
void appendNumber(std::string& text, Number number) {
  char digits[32];
  text += kNumber;
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

template <typename Number>
bool appendIfNumber(std::string& text, const std::optional<Number>& number) {
  if (number) appendNumber(text, *number);
  return number.has_value();
}

// In the order in which a command line looks for a parameter. False when the value has no unit.
bool appendInUnit(std::string& text, const FunctionTemplate& function, std::string_view parameter,
                  std::string_view value) {
  if (parameterNamed(function.inputs, parameter) || parameterNamed(function.enums, parameter)) return false;
  if (parameterNamed(function.integers, parameter))
    return appendIfNumber(text, exactNumber<std::int64_t>(value));
  if (parameterNamed(function.floats, parameter)) {
    const auto number = exactNumber<double>(value);
    if (!number || !std::isfinite(*number)) return false;
    appendNumber(text, *number == 0 ? 0.0 : *number);  // there is one zero
    return true;
  }
  if (parameterNamed(function.timecodes, parameter)) return appendIfNumber(text, packedTimecode(value));
  return false;
}

// With its length in front: so no text can be taken for two.
void appendSized(std::string& text, std::string_view part) {
  text.append(std::to_string(part.size())).append(1, ' ').append(part);
}

std::optional<FunctionRecord> functionOf(const MacroCommand& command, const FunctionDictionary* dictionary) {
  if (!dictionary || command.parameters.empty() || command.classic()) return std::nullopt;
  return dictionary->find(command.functionName());
}

const FunctionTemplate* definitionOf(const std::optional<FunctionRecord>& function) {
  return function ? &function->definition() : nullptr;
}

bool equalInUnit(const FunctionTemplate* function, const MacroParameter& a, const MacroParameter& b) {
  if (a.hasValue != b.hasValue) return false;
  std::string first, second;
  appendComparedValue(first, function, a.name, a.value);
  appendComparedValue(second, function, b.name, b.value);
  return first == second;
}

std::optional<std::string> storedValue(const MacroParameter* parameter) {
  return parameter && parameter->hasValue ? std::optional(parameter->value) : std::nullopt;
}

CommandChange parameterChange(const std::vector<MacroParameter>& a, int placeInA,
                              const std::vector<MacroParameter>& b, int placeInB) {
  const MacroParameter* const inA = placeInA < 0 ? nullptr : &a[static_cast<std::size_t>(placeInA)];
  const MacroParameter* const inB = placeInB < 0 ? nullptr : &b[static_cast<std::size_t>(placeInB)];
  return {What::kParameter, inA ? inA->name : inB->name, storedValue(inA), storedValue(inB), false, placeInA,
          placeInB};
}

// The place in `b` for each of `a`: the next one of that name; -1 when there is none.
std::vector<int> placesBeside(const std::vector<MacroParameter>& a, const std::vector<MacroParameter>& b) {
  std::unordered_map<std::string_view, std::deque<int>> places;
  for (std::size_t j = 0; j < b.size(); ++j) places[b[j].name].push_back(static_cast<int>(j));
  std::vector<int> beside;
  beside.reserve(a.size());
  for (const MacroParameter& parameter : a) {
    const auto found = places.find(parameter.name);
    const bool there = found != places.end() && !found->second.empty();
    beside.push_back(there ? found->second.front() : -1);
    if (there) found->second.pop_front();
  }
  return beside;
}

void addParameterChanges(std::vector<CommandChange>& changes, const std::vector<MacroParameter>& a,
                         const std::vector<MacroParameter>& b, const FunctionTemplate* function) {
  const std::vector<int> beside = placesBeside(a, b);
  std::vector<bool> taken(b.size(), false);
  int last = -1;
  bool inOrder = true;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (beside[i] >= 0) {
      taken[static_cast<std::size_t>(beside[i])] = true;
      inOrder = inOrder && beside[i] > last;
      last = beside[i];
    }
    const MacroParameter* const other = beside[i] < 0 ? nullptr : &b[static_cast<std::size_t>(beside[i])];
    if (other && *other == a[i]) continue;
    CommandChange change = parameterChange(a, static_cast<int>(i), b, beside[i]);
    change.sameInUnit = other && equalInUnit(function, a[i], *other);
    changes.push_back(std::move(change));
  }
  for (std::size_t j = 0; j < b.size(); ++j) {
    if (!taken[j]) changes.push_back(parameterChange(a, -1, b, static_cast<int>(j)));
  }
  if (!inOrder) changes.push_back({.what = What::kOrder});
}

}  // namespace

void appendComparedValue(std::string& text, const FunctionTemplate* function, std::string_view parameter,
                         std::string_view value) {
  if (function && appendInUnit(text, *function, parameter, value)) return;
  text += kText;
  text += value;
}

bool equalInUnit(const FunctionTemplate& function, std::string_view parameter, std::string_view a,
                 std::string_view b) {
  if (a == b) return true;
  std::string first, second;
  appendComparedValue(first, &function, parameter, a);
  appendComparedValue(second, &function, parameter, b);
  return first == second;
}

std::string meaningOf(const MacroCommand& command, const FunctionDictionary* dictionary) {
  const auto function = functionOf(command, dictionary);
  const FunctionTemplate* const definition = definitionOf(function);
  std::string meaning, value;
  meaning.reserve(command.fid.size() + 32 * (command.parameters.size() + 1));
  appendSized(meaning, command.fid);
  for (const auto& [what, field] : kFields) {
    if (what != What::kUnread) appendSized(meaning, command.*field);
  }
  for (const MacroParameter& parameter : command.parameters) {
    appendSized(meaning, parameter.name);
    value.clear();
    if (parameter.hasValue) appendComparedValue(value, definition, parameter.name, parameter.value);
    appendSized(meaning, value);
  }
  return meaning;
}

std::vector<CommandChange> changesBetween(const MacroCommand& a, const MacroCommand& b,
                                          const FunctionDictionary* dictionary) {
  std::vector<CommandChange> changes;
  const auto add = [&changes](What what, std::string_view inA, std::string_view inB) {
    if (inA == inB) return;
    changes.push_back({.what = what, .a = std::string(inA), .b = std::string(inB)});
  };
  if (a.fid != b.fid) {
    add(What::kDestination, a.destination(), b.destination());
    add(What::kFunction, a.functionName(), b.functionName());
    if (changes.empty()) add(What::kFunction, a.fid, b.fid);  // one has a "." in front
  }
  const bool sameFunction = a.functionName() == b.functionName();
  const auto function = sameFunction ? functionOf(a, dictionary) : std::nullopt;
  for (const auto& [what, field] : kFields) {
    if (what != What::kUnread) add(what, a.*field, b.*field);
  }
  addParameterChanges(changes, a.parameters, b.parameters, definitionOf(function));
  add(What::kUnread, a.unread, b.unread);
  return changes;
}

}  // namespace tessaly
