#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "xctl/XctlLib.h"

// The messages of docs/protocol.md, one JSON-RPC 2.0 object a line, for both ends of a connection. Texts
// given may be UTF-8 or Windows-1252 bytes and are written as UTF-8; texts read are UTF-8. Plain values, no
// shared state.
namespace tessaly {

inline constexpr std::size_t kLongestLine = std::size_t{1024} * 1024;  // bytes, without the line feed
inline constexpr std::size_t kDeepestMessage = 16;                     // nested objects and arrays

inline constexpr std::string_view kHelloMethod = "hello";          // panel: the greeting
inline constexpr std::string_view kValueMethod = "value";          // panel: a subscribed value
inline constexpr std::string_view kTriggerMethod = "trigger";      // panel: a trigger value
inline constexpr std::string_view kSubscribeMethod = "subscribe";  // editor
inline constexpr std::string_view kCallMethod = "call";            // editor

// Error codes of JSON-RPC.
inline constexpr int kErrorNoJson = -32700;
inline constexpr int kErrorNoRequest = -32600;
inline constexpr int kErrorNoMethod = -32601;
inline constexpr int kErrorBadParameters = -32602;

struct WireMessage {
  std::string method;
  std::optional<std::string> id;  // a request that wants an answer: its id as JSON
  // Members of "params"; absent also when they are no text.
  std::optional<std::string> name, value, function;
  // The "parameters" of a call, in order; absent unless each is an object with a text "name" and "value".
  std::optional<ParameterList> parameters;
};

enum class LineKind {
  kMessage,  // `message` is filled
  kOther,    // JSON, but no message to act on: an answer, or no JSON-RPC 2.0 object
  kBroken    // no JSON, or nested too deep: the peer does not speak the protocol
};

[[nodiscard]] LineKind parseLine(std::string_view line, WireMessage& message);

// Whole lines, line feed included.
[[nodiscard]] std::string helloLine(std::string_view panel);
[[nodiscard]] std::string valueLine(std::string_view method, std::string_view name, std::string_view value);
[[nodiscard]] std::string subscribeLine(std::string_view name);
[[nodiscard]] std::string callLine(std::string_view function, const ParameterList& parameters);
[[nodiscard]] std::string answerLine(std::string_view id);
[[nodiscard]] std::string errorLine(std::string_view id, int code, std::string_view text);

// Cuts a stream into lines. Holds at most one unfinished line and what was appended last.
class LineBuffer {
 public:
  void append(std::string_view bytes);
  // The next whole line, without its end; valid until the next call of a member.
  [[nodiscard]] std::optional<std::string_view> next();
  // True when the unfinished line is longer than any message may be. Ask after `next` has given all lines.
  [[nodiscard]] bool overflown() const { return bytes_.size() - start_ > kLongestLine; }

 private:
  std::string bytes_;
  std::size_t start_ = 0;    // of the first line not yet given
  std::size_t scanned_ = 0;  // no line feed stands before this place
};

}  // namespace tessaly
