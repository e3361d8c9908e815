#include <algorithm>
#include <span>

#include "classic/ClassicDescription.h"
#include "classic/ClassicGroups.h"
#include "classic/ClassicParameter.h"
#include "classic/ClassicValue.h"
#include "classic/DecodingList.h"
#include "fuzz/Fuzzing.h"

// A decoding list up to a NUL, then cd, co and an action, and the parameter bytes of commands that are
// matched with it, one command for each of its keywords.
namespace tessaly {
namespace {

void checkNumbers(const KeywordEntry& entry, const ParameterDescriptor& descriptor) {
  const ParameterRange range = parameterRange(descriptor);
  require(range.minimum <= range.maximum, "a range is not empty");
  for (const bool last : {false, true}) static_cast<void>(plainBytes(entry, descriptor, last));
  if (range.entry != ParameterEntry::kNumber) return;
  require(!bytesOfNumber(entry, descriptor, range.minimum - 1) &&
              !bytesOfNumber(entry, descriptor, range.maximum + 1),
          "a number outside the range is refused");
  for (const std::int64_t number : {range.minimum, range.maximum}) {
    const auto bytes = bytesOfNumber(entry, descriptor, number);
    require(bytes && bytes->size() == valueWidth(descriptor.type), "a limit has its bytes");
    const std::optional<std::int64_t> shown = typedNumber(entry, descriptor, *bytes);
    require(shown.has_value(), "a limit is shown");
    const std::int64_t typed = *shown;
    // Rows may share a value, and percent may be coarser than the values.
    const bool exact = descriptor.rowCount == 0 && !showsPercent(descriptor);
    require(!exact || typed == number, "a limit is typed as it was read");
    require(bytesOfNumber(entry, descriptor, typed) == bytes, "a number that is shown writes the same bytes");
  }
}

void checkEntry(const KeywordEntry& entry) {
  require(entry.parameters.size() <= KeywordEntry::kMostParameters, "the parameters are bounded");
  for (const ParameterDescriptor& descriptor : entry.parameters) {
    require(descriptor.firstRow + descriptor.rowCount <= entry.rows.size(), "rows are the entry's own");
    require(descriptor.rowCount == 0 || isEnumerated(descriptor.type), "only enumerations have rows");
    checkNumbers(entry, descriptor);
  }
}

void checkCommand(const DecodingList& list, const ClassicCommand& command) {
  const auto entry = list.find(command);
  const std::string description = describeClassic(command, &list);
  require(description.starts_with(actionText(command, entry ? &*entry : nullptr) +
                                  groupName(command.cd(), command.co())),
          "a description begins with the action and the group");
  if (!entry) return;
  require(entry->keyword == command.kw() && entry->index < list.entries().size(),
          "an entry is one of the list's, found by its keyword");
  const auto cut = cutParameters(command, *entry);
  std::size_t position = 0;
  for (std::size_t i = 0; i < cut.values.size(); ++i) {
    if (!cut.values[i]) continue;
    const ParameterDescriptor& descriptor = entry->parameters[i];
    const ParameterRange range = parameterRange(descriptor);
    if (range.entry == ParameterEntry::kNumber) {
      // A value without a row is shown as none.
      const std::optional<std::int64_t> typed = typedNumber(*entry, descriptor, *cut.values[i]);
      require(!typed || (*typed >= range.minimum && *typed <= range.maximum),
              "a number that is shown is in the range");
    }
    const auto part = command.parameters().subspan(position, cut.values[i]->size());
    require(std::equal(part.begin(), part.end(), cut.values[i]->begin()), "parameters are cut out in order");
    position += part.size();
  }
}

void run(FuzzInput input) {
  const std::string_view text = input.text();
  const std::uint8_t cd = input.byte(), co = input.byte(), action = input.byte();
  const std::string_view rest = input.rest();
  const auto list = DecodingList::parse(text, cd, co);
  if (!list) return;
  require(!list->entries().empty(), "a list has an entry");
  for (const KeywordEntry& entry : list->entries()) checkEntry(entry);
  const std::span bytes(reinterpret_cast<const std::uint8_t*>(rest.data()), rest.size());
  for (const KeywordEntry& entry : list->entries()) {
    ClassicCommand command;
    command.build(action, cd, co, entry.keyword, bytes);
    checkCommand(*list, command);
  }
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({data, size});
  return 0;
}
