#pragma once

#include <string>
#include <utility>

namespace tessaly {

// A macro that may go to a panel: the user was asked about its errors, or it stood there before. Nothing else
// is sent (MacroTransfers), so that no way to a panel leads past the question.
class Sendable {
 public:
  // What an undo brings back.
  [[nodiscard]] static Sendable again(std::string bytes) { return Sendable(std::move(bytes)); }

  [[nodiscard]] const std::string& bytes() const { return bytes_; }

 private:
  friend class OpenMacros;  // which asks
  explicit Sendable(std::string bytes) : bytes_(std::move(bytes)) {}

  std::string bytes_;
};

}  // namespace tessaly
