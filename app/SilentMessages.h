#pragma once

#include "platform/Messages.h"

namespace tessaly {

// For reading what may well be unreadable, which the caller tells in its own way.
class SilentMessages : public Messages {
 public:
  void show(const std::string&, MessageIcon) override {}
  [[nodiscard]] bool ask(const std::string&, MessageIcon) override { return false; }
};

}  // namespace tessaly
