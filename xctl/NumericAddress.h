#pragma once

#include <cstdint>
#include <memory>
#include <string>

// Behind the system's own headers for sockets, which declare the calls.
namespace tessaly {

using AddressList = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

// Empty for what is neither a numeric address nor "localhost".
inline AddressList numericAddress(const std::string& host, std::uint16_t port) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
  addrinfo* found = nullptr;
  const std::string address = host == "localhost" ? "127.0.0.1" : host;
  if (getaddrinfo(address.c_str(), std::to_string(port).c_str(), &hints, &found) != 0) found = nullptr;
  return {found, &freeaddrinfo};
}

}  // namespace tessaly
