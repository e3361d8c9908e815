#include "bench/BareLine.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstdlib>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace tessaly::bench {

void subscribeAndCount(std::uint16_t port, const std::vector<std::string>& names) {
  const int handle = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) std::abort();
  std::string questions;
  for (const std::string& name : names)
    questions += R"({"jsonrpc":"2.0","method":"subscribe","params":{"name":")" + name + "\"}}\n";
  std::thread writer([&] {
    for (std::size_t sent = 0; sent < questions.size();)
      sent += static_cast<std::size_t>(
          std::max<ssize_t>(0, send(handle, questions.data() + sent, questions.size() - sent, MSG_NOSIGNAL)));
  });
  std::array<char, 65536> buffer{};
  const auto expected = static_cast<std::ptrdiff_t>(names.size() + 1);
  for (std::ptrdiff_t lines = 0; lines < expected;) {
    const ssize_t count = recv(handle, buffer.data(), buffer.size(), 0);
    if (count <= 0) std::abort();
    lines += std::count(buffer.begin(), buffer.begin() + count, '\n');
  }
  writer.join();
  close(handle);
}

}  // namespace tessaly::bench
