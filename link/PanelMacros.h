#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "link/PanelClient.h"
#include "platform/FtpClient.h"
#include "platform/MacroKeeper.h"
#include "platform/Outcome.h"
#include "platform/SiteRoot.h"
#include "platform/ThreadAnnotations.h"

namespace tessaly {

inline constexpr std::uint16_t kFtpPort = 21;

// Where a macro lies on the panel, or an empty text unless there are such a workplace and number, so that no
// text leads out of the macro folders.
[[nodiscard]] std::string remoteMacroPath(int workplace, std::string_view number);

// What became of an operation that moves files.
struct TransferOutcome {
  FtpClient::Result transfer = FtpClient::Result::kDone;
  bool upload = false;     // the last thing tried was sending
  bool announced = false;  // an upload succeeded and the panel was told to read its macros again
  std::string detail{};    // why what came is no macro; else empty

  [[nodiscard]] bool done() const { return transfer == FtpClient::Result::kDone && (!upload || announced); }
  // A failed upload had begun to write: the panel may hold a part of the macro.
  [[nodiscard]] bool leavesAPart() const;
  // One line for standard error; the window has it in its user's language.
  [[nodiscard]] std::string describe() const;
};

// One operation's way to the panel's files. As FtpClient, which it is outside of tests.
class MacroTransfer {
 public:
  virtual ~MacroTransfer() = default;
  [[nodiscard]] virtual FtpClient::Result get(const std::string& remotePath, const std::string& hostPath,
                                              const FtpClient::Check& check) = 0;
  // As get, for old content that is fetched to be kept, whatever it is: whoever is waited for is not waited
  // for long.
  [[nodiscard]] virtual FtpClient::Result getSoon(const std::string& remotePath,
                                                  const std::string& hostPath) {
    return get(remotePath, hostPath, {});
  }
  [[nodiscard]] virtual FtpClient::Result put(const std::string& hostPath, const std::string& remotePath) = 0;
  virtual void cancel() = 0;  // from another thread
};

// A way to the host of a panel address.
using MacroTransferFactory = std::function<std::unique_ptr<MacroTransfer>(const std::string& host)>;

// By FTP with the panel's login. A port in the address is that of the control service and is left out.
[[nodiscard]] MacroTransferFactory ftpTransfers(std::uint16_t port = kFtpPort);

// Whether bytes can be read as a macro; the failure's text says why not. Any thread.
using MacroReader = std::function<Outcome(std::string_view bytes)>;

// Moves macros between this computer and a panel, and has the panel delete and rename them. Files are site
// paths, macro numbers three digits. Operations block, one at a time, on any thread; `cancel` comes from
// another one. A failed download leaves the local file as it was, and one that brings no macro counts as
// failed; a failed upload is not announced, and what a broken one leaves on the panel is the panel's affair:
// it may be a part of the macro. Nobody is told of failures but the caller.
//
// With a keeper, what a number holds is fetched before it is overwritten or deleted. That is an extra:
// whatever becomes of it, an upload goes on, except that it is not tried on a panel that was just found
// unreachable. A deletion stops when its caller wants the old content kept.
class PanelMacros {
 public:
  // Observes client and root. Without a reader whatever comes is taken. With `demo` no file moves: every
  // transfer fails.
  PanelMacros(PanelClient& client, const SiteRoot& root, MacroTransferFactory transfers, bool demo = false,
              MacroReader reader = {});

  // Observed. Before the first operation.
  void keepIn(MacroKeeper& keeper) { keeper_ = &keeper; }

  [[nodiscard]] TransferOutcome download(const std::string& address, int workplace, std::string_view number,
                                         std::string_view file);

  // Also for a macro that was just created in `file`.
  [[nodiscard]] TransferOutcome upload(const std::string& address, int workplace, std::string_view number,
                                       std::string_view file, MacroChange change = MacroChange::kSave);

  // Within one workplace of one panel. The macro is fetched into `buffer`, which is overwritten, and sent
  // from there.
  [[nodiscard]] TransferOutcome copyOnPanel(const std::string& address, int workplace,
                                            std::string_view source, std::string_view target,
                                            std::string_view buffer);

  enum class OldContent { kKept, kLost };
  struct Deletion {
    bool asked = false;  // the panel, which answers by the name that it publishes then
    Outcome kept;        // not done: there is old content that could not be kept, so it was not asked
  };
  // Asks the panel to delete a macro, once its old content is kept, unless that may be lost. Nor is it asked
  // when the user cancels while the old content is fetched from `address`.
  [[nodiscard]] Deletion remove(const std::string& address, int workplace, std::string_view number,
                                OldContent old = OldContent::kKept);
  // Asks the panel; as above. False when it could not be asked.
  [[nodiscard]] bool rename(int workplace, std::string_view number, const std::string& name);

  // Ends the running operation; without one it does nothing.
  void cancel();

 private:
  class Running;

  [[nodiscard]] TransferOutcome fetch(MacroTransfer& transfer, const std::string& remotePath,
                                      std::string_view file);
  [[nodiscard]] TransferOutcome send(MacroTransfer& transfer, std::string_view file, const MacroPlace& place,
                                     MacroChange change);
  // What became of fetching the old content, and of keeping it; done when there is nobody to keep it, or
  // nothing.
  struct Kept {
    FtpClient::Result fetched = FtpClient::Result::kDone;
    Outcome outcome;
  };
  [[nodiscard]] Kept keep(MacroTransfer& transfer, const MacroPlace& place, MacroChange change);

  PanelClient& client_;
  const SiteRoot& root_;
  MacroTransferFactory transfers_;
  bool demo_;
  MacroReader reader_;
  MacroKeeper* keeper_ = nullptr;
  Mutex mutex_;
  MacroTransfer* running_ GUARDED_BY(mutex_) = nullptr;  // of the operation under way
};

}  // namespace tessaly
