#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "link/MacroTransfer.h"

namespace tessaly {

// How long a panel that has gone in the middle of a macro is waited for, so that it does not keep a part.
struct PutBackPatience {
  std::chrono::milliseconds total{60'000};
  std::chrono::milliseconds afterCancel{10'000};  // the user does not want to wait
  std::chrono::milliseconds pause{1'000};         // between two tries
};

// Sends a macro to a panel, and believes nothing but what comes back: what was sent is read and compared byte
// by byte before the panel is told to load it. A difference is sent once more; then what stood there before
// is put back, and read in its turn: but only where a look has found neither the old macro nor the new one,
// so that a panel that takes nothing more is not written to in vain. Where the old macro is not known, or
// there was none and the panel cannot be asked to delete what has come there, the new one is what is tried on
// with: a part of a macro is the worst to be left. Blocking.
class VerifiedSend {
 public:
  using Result = FtpClient::Result;

  // What stands there before: `kDone` with the bytes, `kNotFound`, or why it is not known. `kUnreadable` is
  // no macro; its bytes are there when they came the same twice, so that they are known again, but they are
  // never written: a line that garbles all alike would spoil the panel by them, and nobody can use them
  // anyway.
  struct Old {
    Result fetched = Result::kNotFound;
    std::optional<std::string> bytes{};
  };

  // What it needs of the operation that it is a part of.
  struct Way {
    std::function<MacroTransfer&()> transfer;
    // After a cancel: transfers again, until the next one.
    std::function<void()> renew;
    std::function<bool()> load;    // tells the panel to read its macros again
    std::function<bool()> remove;  // asks the panel to delete the macro; false where it cannot be asked
  };

  VerifiedSend(Way way, std::string remotePath, PutBackPatience patience)
      : way_(std::move(way)), remotePath_(std::move(remotePath)), patience_(patience) {}

  [[nodiscard]] TransferOutcome send(std::string_view bytes, const Old& old);

 private:
  enum class Stored { kOld, kNew, kOther, kUnread };

  [[nodiscard]] Stored look(std::string_view bytes, const Old& old, std::chrono::seconds patience,
                            TransferOutcome& outcome) const;
  [[nodiscard]] TransferOutcome taken(TransferOutcome outcome, PanelHolds holds) const;
  [[nodiscard]] TransferOutcome putBack(std::string_view bytes, const Old& old, TransferOutcome outcome);
  [[nodiscard]] Stored tryPutBack(std::string_view bytes, const Old& old, TransferOutcome& outcome) const;

  Way way_;
  std::string remotePath_;
  PutBackPatience patience_;
};

}  // namespace tessaly
