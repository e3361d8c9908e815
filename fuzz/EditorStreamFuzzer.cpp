#include <array>
#include <sys/socket.h>
#include <vector>

#include "fuzz/Fuzzing.h"
#include "panelsim/ControlClient.h"

// What an editor may send to the simulated panel's control service: the first byte tells the size of the
// pieces, the second the faults of the panel.
namespace tessaly {
namespace {

class EchoPanel final : public ControlledPanel {
 public:
  std::optional<std::string> currentValue(const std::string& name) override {
    if (name.size() % 3 == 0) return std::nullopt;
    return name;
  }
  bool call(const std::string& function, const ParameterList& parameters) override {
    return function.size() > parameters.items().size();
  }
};

// The panel's end under test, and our end that plays the editor.
class Line {
 public:
  Line() {
    int pair[2];
    require(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, pair) == 0,
            "there are sockets");
    panel = Socket(pair[0]);
    editor = Socket(pair[1]);
  }

  // Everything that the panel has sent so far must be lines that we understand.
  void takeAnswers() {
    std::array<char, 4096> bytes;
    std::size_t count = 0;
    while (editor.receive(bytes, count) == Socket::Transfer::kDone) answers.append({bytes.data(), count});
    WireMessage message;
    while (const auto line = answers.next()) {
      const LineKind kind = parseLine(*line, message);
      require(kind != LineKind::kBroken, "the panel sends JSON only");
      require(kind == LineKind::kOther || message.method == kHelloMethod || (message.name && message.value),
              "the panel sends greetings, values and answers");
    }
  }

  Socket panel, editor;
  LineBuffer answers;
};

void run(FuzzInput input) {
  static const Log silent = [](const std::string&) {};
  const std::size_t piece = std::size_t{input.byte()} * 16 + 1;
  const std::uint8_t flags = input.byte();
  ControlFaults faults;
  faults.neverAnswer = (flags & 1) != 0;
  if ((flags & 2) != 0) faults.dropAfter = flags >> 2;
  EchoPanel panel;
  Line line;
  ControlClient client(std::move(line.panel), 1, panel, silent);
  client.greet(faults);
  std::string_view stream = input.rest();
  while (!stream.empty() && !client.ended()) {
    std::size_t sent = 0;
    if (line.editor.send(stream.substr(0, piece), sent) != Socket::Transfer::kDone) break;
    stream.remove_prefix(sent);
    client.receive(faults);
    client.publish(kValueMethod, "a", "b", faults);
    client.send();
    client.endWhenDropIsDue(faults);
    line.takeAnswers();
  }
  client.publish(kTriggerMethod, "a", "b", faults);
  client.send();
  line.takeAnswers();
  line.editor.close();
  client.receive(faults);
  require(client.ended() || !stream.empty(), "a connection that the editor closed has ended");
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({data, size});
  return 0;
}
