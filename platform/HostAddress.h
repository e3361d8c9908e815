#pragma once

#include <compare>
#include <string>

namespace tessaly {

// An address of four decimal numbers as people write it, "192.168.001.020:56662": without the zeros before
// its numbers, which the system's own calls would take for octal ones, and so for another machine. Any other
// text, and what stands behind the address, stay as they are.
[[nodiscard]] std::string decimalAddress(const std::string& address);

// The address of a panel as somebody has spelt it, which is what is shown of it. Equal are those that name
// one machine, whatever zeros stand before their numbers and whatever port behind them: what lies on a panel
// is reached by its machine. So whoever tells places apart, or keeps something by them, keeps this and no
// text.
class HostAddress {
 public:
  HostAddress() = default;
  HostAddress(std::string text);  // NOLINT(google-explicit-constructor): any text is an address
  HostAddress(const char* text) : HostAddress(std::string(text)) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] const std::string& text() const { return text_; }
  // One text for all spellings.
  [[nodiscard]] const std::string& key() const { return key_; }
  [[nodiscard]] bool empty() const { return text_.empty(); }

  friend bool operator==(const HostAddress& a, const HostAddress& b) { return a.key_ == b.key_; }
  friend auto operator<=>(const HostAddress& a, const HostAddress& b) { return a.key_ <=> b.key_; }

 private:
  std::string text_;
  std::string key_;
};

}  // namespace tessaly
