#pragma once

#include <string>
#include <vector>

#include "platform/Messages.h"

namespace tessaly {

// Keeps what is reported, to be shown later by somebody who can; what is asked is answered by Cancel.
class CollectedMessages final : public Messages {
 public:
  explicit CollectedMessages(std::vector<std::string>& texts) : texts_(texts) {}
  void show(const std::string& text, MessageIcon) override { texts_.push_back(text); }
  [[nodiscard]] bool ask(const std::string& text, MessageIcon) override {
    texts_.push_back(text);
    return false;
  }

 private:
  std::vector<std::string>& texts_;
};

}  // namespace tessaly
