#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessaly::bench {

// Subscribes the names at a panel on this machine over a bare socket and counts the lines of the answers, the
// greeting included: what the wire and the panel alone cost.
void subscribeAndCount(std::uint16_t port, const std::vector<std::string>& names);

}  // namespace tessaly::bench
