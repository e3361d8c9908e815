// A cable that is pulled: the loopback interface of a network of the program's own goes down under a
// connection. The loss has to be known within 15 s, with and without something on its way, and what had not
// arrived must never be sent again, also when the user left meanwhile. Needs the right to make a network
// namespace.
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <net/if.h>
#include <sched.h>
#include <sstream>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tests/xctl/ScriptedPeer.h"

namespace tessaly {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kLongestLoss{15'000};

bool ownNetwork() { return ::unshare(::geteuid() == 0 ? CLONE_NEWNET : CLONE_NEWUSER | CLONE_NEWNET) == 0; }

bool plugIn(bool in) {
  const Socket socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  ifreq request{};
  std::strcpy(request.ifr_name, "lo");
  request.ifr_flags = in ? IFF_UP | IFF_RUNNING : 0;
  return ::ioctl(socket.handle(), SIOCSIFFLAGS, &request) == 0;
}

// What the system would still send to this port, also for connections that are closed.
std::size_t bytesOnTheirWay(std::uint16_t port) {
  std::ifstream table("/proc/self/net/tcp");
  std::string line;
  std::getline(table, line);  // the headings
  std::size_t bytes = 0;
  while (std::getline(table, line)) {
    std::istringstream fields(line);
    std::string number, local, remote, state, queues;
    fields >> number >> local >> remote >> state >> queues;
    if (std::stoul(remote.substr(remote.find(':') + 1), nullptr, 16) == port)
      bytes += std::stoul(queues.substr(0, queues.find(':')), nullptr, 16);
  }
  return bytes;
}

enum class Leaving { kWaits, kLeaves };

// One connection whose cable is pulled. Empty when all is well.
std::string pull(const char* what, bool calls, Leaving leaving) {
  ScriptedPeer peer([](ScriptedPeer& self, const Socket& socket) {
    self.send(socket, helloLine("cable"));
    self.drain(socket);
  });
  Recorder recorder;
  XCTLConnection connection(kXctlTransportTcp);
  if (!plugIn(true) || !connection.connect("127.0.0.1", peer.port(), &recorder)) return "does not connect";
  if (!plugIn(false)) return "the interface stays up";
  const auto start = Clock::now();
  if (calls && !connection.callFunctionId("PANEL.MACRO1.NAME.SET", {})) return "the call is refused";
  if (leaving == Leaving::kLeaves) connection.disconnect();
  const auto lost = [&] { return recorder.events().back() == "status 1"; };
  while (!lost() && Clock::now() - start < 2 * kLongestLoss) std::this_thread::sleep_for(milliseconds(20));
  const auto took = std::chrono::duration_cast<milliseconds>(Clock::now() - start);
  std::printf("%s: known after %lld ms, %zu bytes on their way\n", what, static_cast<long long>(took.count()),
              bytesOnTheirWay(peer.port()));
  if (took > kLongestLoss) return "the loss is not noticed";
  return bytesOnTheirWay(peer.port()) > 0 ? "something will still be sent" : "";
}

int run() {
  if (!ownNetwork()) {
    std::perror("a network namespace of its own");
    return 1;
  }
  struct {
    const char* what;
    bool calls;
    Leaving leaving;
  } const cases[] = {{"a quiet line", false, Leaving::kWaits},
                     {"a call under way", true, Leaving::kWaits},
                     {"a call under way, and the user leaves", true, Leaving::kLeaves}};
  int failed = 0;
  for (const auto& [what, calls, leaving] : cases) {
    const std::string problem = pull(what, calls, leaving);
    if (problem.empty()) continue;
    std::printf("%s: %s\n", what, problem.c_str());
    ++failed;
  }
  return failed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace tessaly

int main() { return tessaly::run(); }
