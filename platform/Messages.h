#pragma once

#include <string>

namespace tessaly {

enum class MessageIcon { kNone, kExclamation, kQuestion };
enum class MessageButtons { kOk, kOkCancel };
enum class MessageChoice { kOk, kOther, kCancel };

// How plain code tells the user something: a modal box in the program, a line on standard error in the
// command-line twin, a record in tests. Callable from any thread; `ask` blocks until answered.
class Messages {
 public:
  virtual ~Messages() = default;

  // Shows `text` with an OK button. Text is a byte string, as the files gave it.
  virtual void show(const std::string& text, MessageIcon icon = MessageIcon::kExclamation) = 0;

  // Shows `text` with OK and Cancel; true for OK.
  [[nodiscard]] virtual bool ask(const std::string& text, MessageIcon icon = MessageIcon::kQuestion) = 0;

  // The same with a third button, whose caption is `other`. Who has no room for it asks without.
  [[nodiscard]] virtual MessageChoice choose(const std::string& text, const std::string& other) {
    static_cast<void>(other);
    return ask(text) ? MessageChoice::kOk : MessageChoice::kCancel;
  }
};

// For reading what may well be unreadable, which the caller tells in its own way.
class SilentMessages final : public Messages {
 public:
  void show(const std::string&, MessageIcon) override {}
  [[nodiscard]] bool ask(const std::string&, MessageIcon) override { return false; }
};

}  // namespace tessaly
