#include "platform/HostAddress.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace tessaly {
namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr int kNumbers = 4;

}  // namespace

std::string decimalAddress(const std::string& address) {
  const std::string_view text(address);
  std::string plain;
  std::size_t at = 0;
  for (int number = 0; number < kNumbers; ++number) {
    if (number > 0) {
      if (at == text.size() || text[at] != '.') return address;
      plain += text[at++];
    }
    const std::size_t end = std::min(text.find_first_not_of(kDigits, at), text.size());
    if (end == at) return address;
    const std::size_t first = std::min(text.find_first_not_of('0', at), end - 1);
    plain += text.substr(first, end - first);
    at = end;
  }
  if (at < text.size() && text[at] != ':') return address;
  return plain.append(text.substr(at));
}

HostAddress::HostAddress(std::string text) : text_(std::move(text)), key_(decimalAddress(text_)) {
  const std::size_t colon = key_.find(':');
  if (colon == key_.rfind(':')) key_.resize(std::min(colon, key_.size()));  // several are those of version 6
}

}  // namespace tessaly
