#include <vector>

#include "fuzz/Fuzzing.h"
#include "platform/Text.h"
#include "xctl/JsonLine.h"
#include "xctl/WireText.h"

// A stream of the control protocol, in pieces of the size that the first byte tells, and its texts written
// anew.
namespace tessaly {
namespace {

WireMessage parsed(const std::string& line) {
  require(line.size() > 1 && line.back() == '\n' && line.find('\n') == line.size() - 1,
          "a message is one line");
  WireMessage message;
  require(parseLine({line.data(), line.size() - 1}, message) == LineKind::kMessage, "own lines are messages");
  return message;
}

void checkText(std::string_view bytes) {
  const std::string text = wireText(bytes);
  require(isValidUtf8(text), "texts on the wire are UTF-8");
  require(wireText(text) == text && (!isValidUtf8(bytes) || text == bytes), "UTF-8 goes as it is");
  require(displayUtf8(bytes) == text, "a text is shown as it is sent");
  require(parsed(subscribeLine(bytes)).name == text, "a name arrives");
  const WireMessage value = parsed(valueLine(kValueMethod, bytes, bytes));
  require(value.method == kValueMethod && value.name == text && value.value == text, "a value arrives");
  static_cast<void>(parsed(helloLine(bytes)));
}

void checkMessage(const WireMessage& message) {
  if (message.id) {
    WireMessage answer;
    for (const std::string& line :
         {answerLine(*message.id), errorLine(*message.id, kErrorNoMethod, message.method)}) {
      require(parseLine({line.data(), line.size() - 1}, answer) == LineKind::kOther,
              "an answer is no message");
      require(line.find('\n') == line.size() - 1, "an answer is one line");
    }
  }
  if (!message.function || !message.parameters) return;
  const WireMessage call = parsed(callLine(*message.function, *message.parameters));
  require(call.function == message.function && call.parameters &&
              call.parameters->items() == message.parameters->items(),
          "a call arrives as it was");
}

void run(FuzzInput input) {
  const std::size_t piece = std::size_t{input.byte()} + 1;
  const std::string_view stream = input.rest();
  LineBuffer buffer;
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < stream.size(); at += piece) {
    buffer.append(stream.substr(at, piece));
    while (const auto line = buffer.next()) lines.emplace_back(*line);
  }
  LineBuffer whole;
  whole.append(stream);
  for (const std::string& line : lines) {
    const auto same = whole.next();
    require(same && *same == line, "lines do not depend on the pieces that they come in");
    WireMessage message;
    if (parseLine(line, message) == LineKind::kMessage) checkMessage(message);
  }
  require(!whole.next(), "no line is lost");
  checkText(stream);
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({data, size});
  return 0;
}
