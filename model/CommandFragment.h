#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/Outcome.h"

class TiXmlElement;

namespace tessaly {

class Macro;
class XmlDocument;

inline constexpr std::size_t kMostFragmentCommands = 5'000;
inline constexpr std::size_t kLargestFragment = 8u * 1024 * 1024;  // bytes

// Commands on their way from one macro to another, as a text that can pass through a clipboard or a pipe
// (docs/fragment-format.md): UTF-8 whatever the macro's encoding, each `cmd` whole, with what nobody of us
// knows in it. An immutable value, cheap to copy. Any thread.
class CommandFragment {
 public:
  // The commands with these numbers, from 0, in the order of the macro, whatever that of the numbers.
  // kNoCommand when there are none or one of them does not exist, kNoFragment for what no fragment can
  // hold, kNoMemory.
  [[nodiscard]] static Expected<CommandFragment> of(const Macro& macro, std::vector<int> numbers);
  // kNoFragment with the reason, kNoMemory. The text of a failure goes on from a name of what was read.
  [[nodiscard]] static Expected<CommandFragment> read(std::string text);

  [[nodiscard]] const std::string& text() const { return content_->text; }
  [[nodiscard]] std::size_t size() const { return content_->size; }  // commands, at least one

  // Puts the commands in front of `before`, a child of `data`, or behind the last child when it is null.
  // kTextNotHeld when the encoding of `target` lacks a letter; nothing has changed then.
  Outcome placeInto(const XmlDocument& target, TiXmlElement& data, TiXmlElement* before) const;

 private:
  struct Content {
    std::string text;
    std::size_t size = 0;
  };
  explicit CommandFragment(Content content) : content_(std::make_shared<Content>(std::move(content))) {}

  std::shared_ptr<const Content> content_;  // never null
};

}  // namespace tessaly
