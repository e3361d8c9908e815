#include <algorithm>
#include <utility>
#include <vector>

#include "platform/Text.h"
#include "review/RetargetClassic.h"
#include "review/RetargetStep.h"

namespace tessaly {
namespace {

using Segments = std::vector<std::string>;

Failure wrong(std::string text) { return {Failure::Kind::kNothingTaken, std::move(text)}; }

Segments segmentsOf(std::string_view name) {
  Segments segments;
  for (std::size_t begin = 0; begin <= name.size();) {
    const std::size_t end = std::min(name.find('.', begin), name.size());
    segments.emplace_back(name.substr(begin, end - begin));
    begin = end + 1;
  }
  return segments;
}

template <typename Parameter>
bool sameNames(const std::vector<Parameter>& a, const std::vector<Parameter>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const Parameter& x, const Parameter& y) { return x.name == y.name; });
}

bool sameParameters(const FunctionRecord& a, const FunctionRecord& b) {
  const FunctionTemplate &first = a.definition(), &second = b.definition();
  if (a.incremental() != b.incremental()) return false;  // values have another unit
  return &first == &second ||
         (sameNames(first.enums, second.enums) && sameNames(first.integers, second.integers) &&
          sameNames(first.floats, second.floats) && sameNames(first.inputs, second.inputs) &&
          sameNames(first.timecodes, second.timecodes));
}

class SegmentStep final : public RetargetStep {
 public:
  SegmentStep(Segments from, Segments to, const LineContext& context)
      : from_(std::move(from)), to_(std::move(to)), context_(context) {}

  std::optional<RetargetedCommand> change(const MacroCommand& command) override {
    if (command.classic()) return withClassicSegments(command, from_, to_, context_.decodingLists);
    const auto name = changedName(command.functionName());
    if (!name) return std::nullopt;
    RetargetedCommand changed{command, {}};
    const auto old = context_.dictionary.find(command.functionName());
    const auto now = context_.dictionary.find(*name);
    if (!old) {
      changed.reason = "its function is not known, and so not what takes its place";
    } else if (!now) {
      changed.reason = "there is no function \"" + *name + '"';
    } else if (!sameParameters(*old, *now)) {
      changed.reason = '"' + *name + "\" takes other parameters";
    } else {
      changed.after.fid.replace(command.fid.size() - command.functionName().size(), std::string::npos, *name);
    }
    return changed;
  }

 private:
  // Nothing when the segments do not stand in it.
  [[nodiscard]] std::optional<std::string> changedName(std::string_view name) const {
    const Segments all = segmentsOf(name);
    const auto fits = [](const std::string& a, const std::string& b) { return equalNoCase(a, b); };
    Segments changed;
    bool found = false;
    for (auto at = all.begin(); at != all.end();) {
      const auto next = std::search(at, all.end(), from_.begin(), from_.end(), fits);
      changed.insert(changed.end(), at, next);
      at = next;
      if (next == all.end()) break;
      found = true;
      changed.insert(changed.end(), to_.begin(), to_.end());
      at += static_cast<std::ptrdiff_t>(from_.size());
    }
    if (!found) return std::nullopt;
    std::string joined;
    for (const std::string& segment : changed) joined.append(joined.empty() ? "" : ".").append(segment);
    return joined;
  }

  Segments from_, to_;
  LineContext context_;
};

}  // namespace

Expected<std::unique_ptr<RetargetStep>> segmentStep(const RetargetRule& rule, const LineContext& context) {
  Segments sides[2] = {segmentsOf(rule.from), segmentsOf(rule.to)};
  for (Segments& side : sides) {
    for (std::string& segment : side) {
      segment = plainSegment(segment);
      if (segment.empty()) return wrong("a segment of the rule is empty");
    }
  }
  if (sides[0] == sides[1]) return wrong("what takes the place is what is there");
  return std::unique_ptr<RetargetStep>(
      std::make_unique<SegmentStep>(std::move(sides[0]), std::move(sides[1]), context));
}

}  // namespace tessaly
