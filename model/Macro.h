#pragma once

#include <memory>
#include <optional>
#include <string>

#include "model/MacroCommand.h"
#include "platform/ContentCheck.h"
#include "platform/Outcome.h"

namespace tessaly {

class XmlDocument;

// The content of one macro (docs/macro-format.md): an immutable value, cheap to copy. The bytes are what
// counts: the commands are read from them, and leave out unknown elements and attributes, comments and
// blanks. Any thread.
class Macro {
 public:
  // kNotXml, kTooLarge, kNoMemory. A document without `macro` or `data` is read, and takes no commands.
  [[nodiscard]] static Expected<Macro> read(std::string bytes);
  [[nodiscard]] static Expected<Macro> read(std::shared_ptr<const std::string> bytes);
  // What printing the tree gives; the commands leave the tree. kNotKept when that would lose what was read,
  // kTooLarge, kNoMemory.
  [[nodiscard]] static Expected<Macro> print(XmlDocument& document);

  [[nodiscard]] const std::string& bytes() const { return *content_->bytes; }
  [[nodiscard]] const MacroCommands& commands() const { return content_->commands; }
  // The commands, for as long as somebody holds them.
  [[nodiscard]] std::shared_ptr<const MacroCommands> sharedCommands() const {
    return {content_, &content_->commands};
  }
  [[nodiscard]] ContentCheck check() const { return content_->check; }
  // There is a `data` in the first `macro`: an empty macro rather than none.
  [[nodiscard]] bool hasData() const { return content_->hasData; }
  // Whether saving gives back all that was read; kNotKept otherwise, and every edit fails with it.
  [[nodiscard]] const Outcome& kept() const { return content_->kept; }
  // Of the first `macro` that has one; UTF-8.
  [[nodiscard]] const std::optional<std::string>& name() const { return content_->name; }
  // What stands in the document beside that name and the commands, and where between the commands (Unread.h).
  [[nodiscard]] const std::string& unread() const { return content_->unread; }

  // The number of the command that takes a value given to `number`: the first from there on that has a
  // parameter with a value; -1 when there is none.
  [[nodiscard]] int takerOfValue(int number) const;

 private:
  struct Content {
    std::shared_ptr<const std::string> bytes;  // never null
    MacroCommands commands;
    ContentCheck check;
    Outcome kept;
    std::optional<std::string> name;
    std::string unread;
    bool hasData = false;
  };

  [[nodiscard]] static Macro take(XmlDocument& document, std::shared_ptr<const std::string> bytes);
  explicit Macro(std::shared_ptr<const Content> content) : content_(std::move(content)) {}

  std::shared_ptr<const Content> content_;  // never null
};

}  // namespace tessaly
