#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/ChannelWindows.h"
#include "platform/OpenFileWindows.h"
#include "platform/RaiseSocket.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr int kWaiting = 8;      // starts that may stand in line
constexpr int kKnockTime = 200;  // ms, for whoever has connected to say the word
constexpr char kAnswer = '!';

// Where the window listens, and the word that only this user's programs can know: both stand in a piece of
// memory that the system gives to nobody else and that goes with its process.
struct Door {
  std::uint16_t port = 0;
  std::array<unsigned char, 16> word{};
};

struct CloseHandleOf {
  void operator()(void* handle) const { ::CloseHandle(handle); }
};
using Owned = std::unique_ptr<void, CloseHandleOf>;
struct Unmap {
  void operator()(void* view) const { ::UnmapViewOfFile(view); }
};
using View = std::unique_ptr<void, Unmap>;

// The folder's own number tells roots apart, however they are spelled. Empty for none.
std::wstring nameOf(const SiteRoot& root) {
  const Descriptor folder = openFile(root.path(), {.access = FILE_READ_ATTRIBUTES});
  BY_HANDLE_FILE_INFORMATION is{};
  if (!folder.isOpen() || ::GetFileInformationByHandle(handleOf(folder), &is) == 0) return {};
  return wideOf(format("Local\\tessaly-raise-%lx-%lx-%lx", is.dwVolumeSerialNumber, is.nFileIndexHigh,
                       is.nFileIndexLow));
}

// The door as long as it is shown.
struct Shown {
  Door door;
  Owned memory;
};

bool show(const std::wstring& name, Shown& shown) {
  shown.memory = Owned(
      ::CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Door), name.c_str()));
  const View view(shown.memory ? ::MapViewOfFile(shown.memory.get(), FILE_MAP_WRITE, 0, 0, sizeof(Door))
                               : nullptr);
  if (view) std::memcpy(view.get(), &shown.door, sizeof(Door));
  return view != nullptr;
}

std::optional<Door> look(const std::wstring& name) {
  const Owned memory(name.empty() ? nullptr : ::OpenFileMappingW(FILE_MAP_READ, FALSE, name.c_str()));
  const View view(memory ? ::MapViewOfFile(memory.get(), FILE_MAP_READ, 0, 0, sizeof(Door)) : nullptr);
  if (!view) return std::nullopt;
  Door door;
  std::memcpy(&door, view.get(), sizeof door);
  return door;
}

bool saysTheWord(const Channel& peer, const Door& door) {
  std::array<char, sizeof door.word> said{};
  std::size_t count = 0;
  while (count < said.size() && waitToRead(peer, kKnockTime)) {
    const int got = ::recv(socketOf(peer), said.data() + count, static_cast<int>(said.size() - count), 0);
    if (got <= 0) return false;
    count += static_cast<std::size_t>(got);
  }
  return std::memcmp(said.data(), door.word.data(), said.size()) == 0;
}

}  // namespace

RaiseSocket::RaiseSocket(const SiteRoot& root) {
  const std::wstring name = nameOf(root);
  auto shown = std::make_shared<Shown>();
  Channel socket = listenHere(kWaiting, shown->door.port);
  auto& word = shown->door.word;
  if (name.empty() || shown->door.port == 0 ||
      ::BCryptGenRandom(nullptr, word.data(), static_cast<ULONG>(word.size()),
                        BCRYPT_USE_SYSTEM_PREFERRED_RNG) != 0 ||
      !show(name, *shown))
    return;
  setBlocking(socket, false);
  listening_ = std::move(socket);
  door_ = std::move(shown);
}

bool RaiseSocket::answer() const {
  bool asked = false;
  while (listening_.isOpen()) {
    const SOCKET accepted = ::accept(socketOf(listening_), nullptr, nullptr);
    if (accepted == INVALID_SOCKET) break;
    const Channel peer(static_cast<int>(accepted));
    // Behind the word nothing comes but the end of somebody who waits no longer.
    if (saysTheWord(peer, static_cast<const Shown*>(door_.get())->door) && !waitToRead(peer, 0))
      asked = ::send(accepted, &kAnswer, 1, 0) == 1 || asked;
  }
  return asked;
}

bool askToRaise(const SiteRoot& root, std::chrono::milliseconds patience) {
  const auto door = look(nameOf(root));
  const Channel socket = door ? connectHere(door->port) : Channel();
  if (!socket.isOpen()) return false;
  const auto size = static_cast<int>(door->word.size());
  char byte = 0;
  return ::send(socketOf(socket), reinterpret_cast<const char*>(door->word.data()), size, 0) == size &&
         waitToRead(socket, static_cast<int>(patience.count())) &&
         ::recv(socketOf(socket), &byte, 1, 0) == 1 && byte == kAnswer;
}

}  // namespace tessaly
