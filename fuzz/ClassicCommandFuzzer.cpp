#include <algorithm>
#include <span>

#include "classic/ClassicCommand.h"
#include "classic/ClassicDescription.h"
#include "classic/ClassicGroups.h"
#include "classic/ClassicParameter.h"
#include "classic/DecodingList.h"
#include "fuzz/Fuzzing.h"

// The input as the byte form and as the text form of a classic command, described with the sample site's
// lists.
namespace tessaly {
namespace {

constexpr std::size_t kReadableParameters = 27;  // more cannot be read back from a text

DecodingLists& lists() {
  static const SiteRoot sample{TESSALY_SAMPLE_SITE};
  static DecodingLists all(sample);
  return all;
}

bool same(const ClassicCommand& a, const ClassicCommand& b) {
  return a.valid() == b.valid() && a.action() == b.action() && a.cd() == b.cd() && a.co() == b.co() &&
         a.kw() == b.kw() && a.longForm() == b.longForm() && a.longLength() == b.longLength() &&
         std::equal(a.parameters().begin(), a.parameters().end(), b.parameters().begin(),
                    b.parameters().end());
}

std::vector<std::uint8_t> bytesIn(const std::string& text) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t at = 0; at + 2 < text.size(); at += 3) bytes.push_back(hexByte(text[at], text[at + 1]));
  return bytes;
}

void checkDescription(const ClassicCommand& command) {
  const auto list = lists().list(command.cd(), command.co());
  const auto entry = list ? list->find(command) : std::nullopt;
  const std::string start =
      actionText(command, entry ? &*entry : nullptr) + groupName(command.cd(), command.co());
  const std::string description = describeClassic(command, lists());
  require(description.starts_with(start), "a description begins with the action and the group");
  if (!entry) return;
  require(entry->keyword == command.kw(), "an entry is found by its keyword");
  const CutParameters cut = cutParameters(command, *entry);
  ParameterBytes joined;
  for (const auto& value : cut.values) {
    if (value) joined.insert(joined.end(), value->begin(), value->end());
  }
  joined.insert(joined.end(), cut.tail.begin(), cut.tail.end());
  require(joined.size() <= command.parameters().size() &&
              std::equal(joined.begin(), joined.end(), command.parameters().begin()),
          "the parameters that are cut out are the command's bytes");
}

void checkValid(const ClassicCommand& command) {
  ClassicCommand built;
  built.build(command.action(), command.cd(), command.co(), command.kw(), command.parameters());
  ClassicCommand read;
  const std::string text = command.text();
  const bool readable = read.decodeText(text);
  if (command.longForm()) {
    require(!readable && !read.valid(), "the long form cannot be read back");
  } else {
    require(command.parameters().size() <= kReadableParameters, "a short command is short");
    require(same(built, command), "a command is built from its parts");
    require(readable && same(read, command), "a short command is read back from its text");
    require(read.debugText() == command.debugText(), "and has the same debug text");
  }
  checkDescription(command);
  checkDescription(built);
}

void run(std::span<const std::uint8_t> bytes) {
  ClassicCommand command;
  if (command.decode(bytes)) {
    checkValid(command);
    if (!command.longForm()) {
      const std::vector<std::uint8_t> encoded = bytesIn(command.text());
      require(encoded.size() <= bytes.size() && std::equal(encoded.begin(), encoded.end(), bytes.begin()),
              "a decoded command encodes to the same bytes");
    }
  } else {
    require(same(command, {}) && command.text().empty(), "what cannot be decoded leaves an empty record");
  }
  if (command.decodeText({reinterpret_cast<const char*>(bytes.data()), bytes.size()})) {
    checkValid(command);
  } else {
    require(same(command, {}), "what cannot be read leaves an empty record");
  }
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({data, size});
  return 0;
}
