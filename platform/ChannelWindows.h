#pragma once

#include <cstdint>
#include <winsock2.h>

#include "platform/Channel.h"

// Sockets of this system, for the twins in this room. Their handles have 32 bits that count.
namespace tessaly {

[[nodiscard]] inline SOCKET socketOf(const Channel& channel) { return static_cast<SOCKET>(channel.number()); }

// Not open without the system's sockets. No child process inherits it.
[[nodiscard]] Channel newChannel();

// Of this computer alone, for port 0 any free one; `port` of what it is bound to, 0 when that failed.
[[nodiscard]] Channel listenHere(int waiting, std::uint16_t& port);
[[nodiscard]] Channel connectHere(std::uint16_t port);
[[nodiscard]] bool waitToRead(const Channel& channel, int milliseconds);  // below 0 without end
void setBlocking(const Channel& channel, bool blocking);

}  // namespace tessaly
