#include "platform/CloseName.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tessaly {
namespace {

constexpr std::size_t kLongestName = 255;  // no real name is longer, and nobody waits for one that is

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::size_t editsBetween(std::string_view a, std::string_view b, std::size_t most) {
  if (a.size() < b.size()) std::swap(a, b);
  if (a.size() - b.size() > most || a.size() > kLongestName) return most + 1;
  // What both begin and end with costs nothing, and most names differ in nothing else.
  while (!b.empty() && lower(a.front()) == lower(b.front())) a.remove_prefix(1), b.remove_prefix(1);
  while (!b.empty() && lower(a.back()) == lower(b.back())) a.remove_suffix(1), b.remove_suffix(1);
  std::array<std::size_t, kLongestName + 1> row{};
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0], least = row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t exchanged = diagonal + (lower(a[i - 1]) == lower(b[j - 1]) ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, exchanged});
      least = std::min(least, row[j]);
    }
    if (least > most) return most + 1;
  }
  return std::min(row[b.size()], most + 1);
}

void CloseName::offer(std::string_view name) {
  const std::size_t edits = editsBetween(wanted_, name, std::min(edits_, kMostEdits));
  if (edits > kMostEdits || edits > edits_ || name == best_) return;
  alone_ = edits < edits_;
  edits_ = edits;
  best_ = name;
}

std::optional<std::string_view> CloseName::found() const {
  // Of a name of two letters every other one is close.
  if (edits_ > kMostEdits || !alone_ || wanted_.size() <= edits_) return std::nullopt;
  return best_;
}

}  // namespace tessaly
