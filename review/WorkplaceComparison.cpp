#include "review/WorkplaceComparison.h"

#include <algorithm>
#include <map>
#include <utility>

#include "model/MacroNameScan.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using State = WorkplaceRow::State;

Failure missing() { return {Failure::Kind::kMissing, "there is no such macro"}; }

bool isMissing(const Expected<std::string>& read) {
  return !read && read.failure().kind == Failure::Kind::kMissing;
}

using Listed = std::map<int, std::string>;  // names by number, as far as a list has them

Listed listedOf(std::vector<MacroShelf::Held> held) {
  Listed listed;
  for (MacroShelf::Held& macro : held) listed[macro.number.value()] = std::move(macro.name);
  return listed;
}

// One that is not listed is not asked for.
Expected<std::string> readIf(const Listed& listed, MacroShelf& shelf, MacroNumber number) {
  const auto found = listed.find(number.value());
  if (found == listed.end()) return missing();
  auto read = shelf.read(number);
  if (!isMissing(read) || isNone({number, found->second}, read.failure())) return read;
  return Failure{Failure::Kind::kPanel, "is listed, but cannot be read"};
}

// The name that stands at the very beginning, where nearly every macro has it: reading all of a file for the
// sake of a row's name would take longer than fetching it. Empty when it does not, or may mean something
// else.
std::string nameAtBeginning(std::string_view bytes) {
  constexpr std::string_view kDeclaration = "<?xml", kName = "<macro name=\"";
  constexpr std::string_view kBlanks = " \t\r\n";
  if (bytes.starts_with(kDeclaration)) bytes.remove_prefix(std::min(bytes.find("?>"), bytes.size() - 2) + 2);
  bytes.remove_prefix(std::min(bytes.find_first_not_of(kBlanks), bytes.size()));
  if (!bytes.starts_with(kName)) return {};
  bytes.remove_prefix(kName.size());
  const std::string_view name = bytes.substr(0, bytes.find_first_of("\"&<"));
  const bool plain = name.size() < bytes.size() && bytes[name.size()] == '"' && isAscii(name);
  return plain ? std::string(name) : std::string();
}

// That of the macro; where it has none, or cannot be read, what the list says.
std::string nameOf(const Expected<std::string>& read, const Listed& listed, MacroNumber number) {
  if (isMissing(read)) return {};
  std::string name = read ? nameAtBeginning(*read) : std::string();
  if (name.empty() && read) name = macroNameIn(*read);
  return name.empty() ? listed.at(number.value()) : name;
}

State stateOf(const Expected<std::string>& left, const Expected<std::string>& right) {
  const bool leftThere = left || !isMissing(left), rightThere = right || !isMissing(right);
  if ((!left && leftThere) || (!right && rightThere)) return State::kUnreadable;
  if (!leftThere) return State::kOnlyRight;
  if (!rightThere) return State::kOnlyLeft;
  if (*left == *right) return State::kSame;
  return differInNameOnly(*left, *right) ? State::kRenamed : State::kDifferent;
}

}  // namespace

bool differInNameOnly(std::string_view left, std::string_view right) {
  const std::size_t shorter = std::min(left.size(), right.size());
  const auto ends =
      std::mismatch(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(shorter), right.begin());
  const auto same = static_cast<std::size_t>(ends.first - left.begin());
  std::size_t behind = 0;
  while (behind < shorter - same && left[left.size() - 1 - behind] == right[right.size() - 1 - behind])
    ++behind;
  // A name is a value in quotes: what differs must lie within one, and within the same on both sides.
  constexpr std::string_view kMarkup = "\"'<>";
  const auto inside = [&](std::string_view text) { return text.substr(same, text.size() - same - behind); };
  if (inside(left).find_first_of(kMarkup) != std::string_view::npos ||
      inside(right).find_first_of(kMarkup) != std::string_view::npos)
    return false;
  const std::size_t open = left.substr(0, same).find_last_of(kMarkup);
  const std::size_t close = left.find_first_of(kMarkup, left.size() - behind);
  if (open == std::string_view::npos || close == std::string_view::npos) return false;
  const char quote = left[open];
  if ((quote != '"' && quote != '\'') || left[close] != quote) return false;
  // It is the name's when another one in its place is read as the name.
  const std::string other = macroNameIn(left) == "x" ? "y" : "x";
  return macroNameIn(std::string(left.substr(0, open + 1)).append(other).append(left.substr(close))) == other;
}

Outcome WorkplaceComparison::run(const Told& told) {
  auto leftList = left_.list();
  if (!leftList) return Failure{leftList.failure().kind, left_.title() + ": " + leftList.failure().text};
  auto rightList = right_.list();
  if (!rightList) return Failure{rightList.failure().kind, right_.title() + ": " + rightList.failure().text};
  const Listed leftNames = listedOf(*std::move(leftList)), rightNames = listedOf(*std::move(rightList));
  Listed numbers = leftNames;
  numbers.insert(rightNames.begin(), rightNames.end());
  for (const auto& [number, name] : numbers) {
    const auto known = MacroNumber::of(number);
    if (!known) continue;
    const auto left = readIf(leftNames, left_, *known);
    const auto right = readIf(rightNames, right_, *known);
    if (cancelled_) return cancelledFailure();
    if (isMissing(left) && isMissing(right)) continue;  // it has gone meanwhile
    WorkplaceRow row{*known, stateOf(left, right), nameOf(left, leftNames, *known), {}};
    if (row.state == State::kSame) {
      row.right = row.left;
    } else {
      row.right = nameOf(right, rightNames, *known);
      row.leftHeld = HeldContent::asRead(left);
      row.rightHeld = HeldContent::asRead(right);
    }
    if (row.state == State::kUnreadable)
      row.trouble = (!left && !isMissing(left) ? left : right).failure().text;
    told(row, numbers.size());
  }
  return {};
}

void WorkplaceComparison::cancel() {
  cancelled_ = true;
  left_.cancel();
  right_.cancel();
}

}  // namespace tessaly
