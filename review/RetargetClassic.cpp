#include "review/RetargetClassic.h"

#include <algorithm>
#include <utility>

#include "classic/ClassicGroups.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

// "Bus Correction" of one group is "Buscorrection" of another.
std::string plainName(std::string_view name) { return replaceAll(plainSegment(name), "-", ""); }

// Device and command code in the words of the table.
struct Codes {
  std::string group, subgroup;  // plain
};

std::optional<Codes> codesOf(const ClassicCommand& command) {
  const ClassicGroup* const group = classicGroup(command.cd());
  if (!group) return std::nullopt;
  return Codes{plainName(group->name), plainName(subgroupName(*group, command.co()))};
}

// What the segments make of them; nothing when they name none.
std::optional<Codes> changedCodes(const Codes& old, std::span<const std::string> from,
                                  std::span<const std::string> to) {
  const auto names = [&](std::size_t place, const std::string& name) {
    return plainName(from[place]) == name;
  };
  const bool groupToo = from.size() == 2 && names(0, old.group) && names(1, old.subgroup);
  const bool group = from.size() == 1 && names(0, old.group);
  const bool subgroup = from.size() == 1 && !group && names(0, old.subgroup);
  if (!groupToo && !group && !subgroup) return std::nullopt;
  if (to.size() != from.size()) return Codes{};
  return Codes{subgroup ? old.group : plainName(to[0]), group ? old.subgroup : plainName(to.back())};
}

const ClassicGroup* groupNamed(const std::string& name) {
  const auto& groups = classicGroups();
  const auto found = std::find_if(groups.begin(), groups.end(), [&](const ClassicGroup& group) {
    return group.cd != kSeparatorCode && plainName(group.name) == name;
  });
  return found == groups.end() ? nullptr : &*found;
}

std::optional<std::uint8_t> codeNamed(const ClassicGroup& group, const std::string& name) {
  for (const ClassicSubgroup& subgroup : group.subgroups) {
    if (subgroup.low == kSeparatorCode) continue;
    for (int co = subgroup.low; co <= subgroup.high; ++co) {
      const auto code = static_cast<std::uint8_t>(co);
      if (plainName(subgroupName(group, code)) == name) return code;
    }
  }
  return std::nullopt;
}

bool sameParameters(const KeywordEntry& a, const KeywordEntry& b) {
  return std::equal(a.parameters.begin(), a.parameters.end(), b.parameters.begin(), b.parameters.end(),
                    [](const auto& x, const auto& y) { return x.type == y.type; });
}

// Whether the list of the new codes has what that of the old ones says of the command.
bool readsTheSame(const ClassicCommand& old, const MacroCommand& now, DecodingLists& lists) {
  const auto entryOf = [&](const ClassicCommand& command) {
    const auto list = lists.list(command.cd(), command.co());
    return list ? list->find(command) : std::nullopt;
  };
  const auto before = entryOf(old);
  if (!before) return true;
  const auto changed = ClassicInMacro::of(now);
  const auto after = changed ? entryOf(changed->command()) : std::nullopt;
  return after && sameParameters(*before, *after);
}

}  // namespace

std::string plainSegment(std::string_view text) {
  std::string plain = replaceAll(toUpperAscii(text), " ", "");
  if (plain == "PP") return "ME0";
  if (plain == "MEH") return "ME4";
  return plain;
}

std::optional<ClassicInMacro> ClassicInMacro::of(const MacroCommand& command) {
  if (!command.classic() || command.parameters.empty() || !command.parameters.front().hasValue)
    return std::nullopt;
  ClassicCommand decoded;
  if (!decoded.decodeText(command.parameters.front().value)) return std::nullopt;
  return ClassicInMacro(command, std::move(decoded));
}

RetargetedCommand ClassicInMacro::with(std::uint8_t cd, std::uint8_t co,
                                       std::span<const std::uint8_t> bytes) const {
  RetargetedCommand changed{*stored_, {}};
  std::string& text = changed.after.parameters.front().value;
  ClassicCommand now;
  now.build(decoded_.action(), cd, co, decoded_.kw(), bytes);
  const std::string was = decoded_.text(), is = now.text();
  // What stands behind the last blank is none of the command's.
  if (was.size() == is.size() && equalNoCase(was, std::string_view(text).substr(0, was.size()))) {
    for (std::size_t i = 0; i < is.size(); ++i)
      if (is[i] != was[i]) text[i] = is[i];
    ClassicCommand read;
    if (read.decodeText(text) && read == now) return changed;
  }
  changed.reason = "its text is not written as classic commands are";
  return changed;
}

std::optional<RetargetedCommand> withClassicSegments(const MacroCommand& command,
                                                     std::span<const std::string> from,
                                                     std::span<const std::string> to, DecodingLists& lists) {
  const auto classic = ClassicInMacro::of(command);
  const auto old = classic ? codesOf(classic->command()) : std::nullopt;
  const auto wanted = old ? changedCodes(*old, from, to) : std::nullopt;
  if (!wanted) return std::nullopt;
  const ClassicGroup* const group = groupNamed(wanted->group);
  const auto co = group && !wanted->subgroup.empty() ? codeNamed(*group, wanted->subgroup) : std::nullopt;
  if (!co) return RetargetedCommand{command, "the classic groups have no counterpart"};
  RetargetedCommand changed = classic->with(group->cd, *co, classic->command().parameters());
  if (changed.reason.empty() && !readsTheSame(classic->command(), changed.after, lists))
    changed.reason = "the decoding list of " + groupName(group->cd, *co) + " does not have the command";
  return changed;
}

}  // namespace tessaly
