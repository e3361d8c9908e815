#include "windows/Rehearsal.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <numeric>
#include <utility>

#include "model/CommandLine.h"

namespace tessaly {

namespace {

// Device codes are named "Me1" where functions say "ME1".
std::string foldedSection(const EffectValue& value) {
  std::string folded(value.section());
  for (char& letter : folded) letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
  return folded;
}

bool changesSomething(const MacroEffect& effect, int command) {
  const auto changes = effect.changes(command);
  return std::any_of(changes.begin(), changes.end(),
                     [](const ValueChange& change) { return !change.soAlready; });
}

MacroEffect replayed(const MacroCommands& commands, const LineContext& lines, const Rehearsal::Start& start) {
  return {commands, lines, [&start](const std::string& name) {
            const auto known = start.find(name);
            return known == start.end() ? std::nullopt : std::optional(known->second);
          }};
}

}  // namespace

Rehearsal::Rehearsal(std::shared_ptr<const MacroCommands> commands, const LineContext& lines,
                     const Start& start)
    : commands_(std::move(commands)), effect_(replayed(*commands_, lines, start)) {
  listValues();
  for (int command = 0; command < effect_.commandCount(); ++command) {
    if (effect_.effect(command).what == CommandEffect::What::kActs) acting_.push_back(command);
    if (effect_.effect(command).what == CommandEffect::What::kUntold) untold_.push_back(command);
  }
}

void Rehearsal::listValues() {
  const auto& values = effect_.values();
  // Where a destination and a unit of it come first.
  std::map<std::string, std::size_t, std::less<>> destinations;
  std::map<std::pair<std::size_t, std::string>, std::size_t> sections;
  std::vector<std::pair<std::size_t, std::size_t>> places;
  places.reserve(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::size_t destination =
        destinations.try_emplace(std::string(values[i].destination()), i).first->second;
    places.emplace_back(destination,
                        sections.try_emplace({destination, foldedSection(values[i])}, i).first->second);
  }
  std::vector<int> order(values.size());
  std::iota(order.begin(), order.end(), 0);
  const auto placeOf = [&](int value) { return places[static_cast<std::size_t>(value)]; };
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return placeOf(a) < placeOf(b); });
  rows_.reserve(values.size() + sections.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    const EffectValue& value = values[static_cast<std::size_t>(order[i])];
    if (i == 0 || placeOf(order[i]) != placeOf(order[i - 1]))
      rows_.push_back({RehearsalRow::Kind::kHeading, -1,
                       destinationLabel(value.destination(), {}) + std::string(value.section())});
    rows_.push_back({RehearsalRow::Kind::kValue, order[i]});
  }
}

int Rehearsal::changingStep(int step, int by) const {
  // The command that leads from `step` to the next one has its number; the one before ends there.
  for (int command = by > 0 ? step : step - 2; command >= 0 && command < effect_.commandCount();
       command += by)
    if (changesSomething(effect_, command)) return command + 1;
  return -1;
}

const ValueChange* Rehearsal::change(int value, int command) const {
  for (const ValueChange& change : effect_.changes(command))
    if (change.value == value) return &change;
  return nullptr;
}

std::vector<std::string> Rehearsal::publishedNames() const {
  std::vector<std::string> names;
  names.reserve(effect_.values().size());
  for (const EffectValue& value : effect_.values())
    if (!value.classic) names.push_back(value.name);
  return names;
}

int keptStep(const MacroCommands& before, const MacroCommands& after, int step) {
  const std::size_t common = std::min(before.size(), after.size());
  std::size_t first = 0, last = 0;  // that are the same at the beginning, and at the end
  while (first < common && before[first] == after[first]) ++first;
  while (last < common && before[before.size() - 1 - last] == after[after.size() - 1 - last]) ++last;
  const auto at = static_cast<std::size_t>(step);
  if (at > first && before.size() - at < last) return static_cast<int>(after.size() - (before.size() - at));
  return static_cast<int>(std::min(at, after.size()));
}

}  // namespace tessaly
