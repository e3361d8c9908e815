#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "link/MacroTransfer.h"
#include "link/PanelClient.h"
#include "link/SeenOnPanel.h"
#include "link/VerifiedSend.h"
#include "platform/MacroKeeper.h"
#include "platform/Outcome.h"
#include "platform/SiteRoot.h"
#include "platform/ThreadAnnotations.h"

namespace tessaly {

// Where a macro lies on the panel, or an empty text unless there are such a workplace and number, so that no
// text leads out of the macro folders.
[[nodiscard]] std::string remoteMacroPath(int workplace, std::string_view number);

// Whether bytes can be read as a macro; the failure's text says why not. Any thread.
using MacroReader = std::function<Outcome(std::string_view bytes)>;

// What stands under a number that is about to be overwritten or deleted, and whether it is kept.
struct PanelStanding {
  VerifiedSend::Old old;
  Outcome kept;  // done also when there is nothing to keep, or nobody to keep it
};
// Asked once that is known; false: nothing is written.
using BeforePanelWrite = std::function<bool(const PanelStanding& standing)>;

// Moves macros between this computer and a panel, and has the panel delete and rename them. Files are site
// paths, macro numbers three digits. Operations block, one at a time, on any thread; `cancel` comes from
// another one. A failed download leaves the local file as it was, and one that brings no macro counts as
// failed; an upload is verified (VerifiedSend), and one that failed is not announced. Nobody is told of
// failures but the caller.
//
// Files come from and go to the address that is given; what the panel is asked goes over the client's one
// line, which may lead to another panel. So nothing is deleted, renamed or carried out but at the address
// that the line leads to, and an upload elsewhere counts as not announced.
//
// What a number holds is fetched before it is overwritten or deleted, and goes to the keeper. That is an
// extra: whatever becomes of it, an upload goes on, except that it is not tried on a panel that was just
// found unreachable. A deletion stops when its caller wants the old content kept. Old content that is
// no macro is fetched twice: what comes the same again stands there, and is kept, but never put back
// (VerifiedSend); what does not was garbled on its way, and counts as not fetched.
class PanelMacros {
 public:
  // Observes client and root. With `demo` no file moves: every transfer fails.
  PanelMacros(PanelClient& client, const SiteRoot& root, MacroTransferFactory transfers, MacroReader reader,
              bool demo = false);

  // Another one with the same client, root, reader and memory of what was seen, for many macros in a row: it
  // stays connected. Keeps nowhere.
  [[nodiscard]] std::unique_ptr<PanelMacros> forMany() const;
  // The way that it takes; without one the same as this one's. Before the first operation.
  void takeForMany(MacroTransferFactory transfers) { manyTransfers_ = std::move(transfers); }

  // Observed. Before the first operation.
  void keepIn(MacroKeeper& keeper) { keeper_ = &keeper; }
  void waitFor(PutBackPatience patience) { patience_ = patience; }
  // The way to the files goes on from one operation to the next, until one is cancelled.
  void stayConnected() { staysConnected_ = true; }

  [[nodiscard]] TransferOutcome download(const HostAddress& address, int workplace, std::string_view number,
                                         std::string_view file);

  // What the panel holds, whether or not it is a macro. Does not count as seen.
  [[nodiscard]] VerifiedSend::Old read(const HostAddress& address, int workplace, std::string_view number);

  // What of the panel was last downloaded or sent, by this one or one made of it.
  [[nodiscard]] const SeenOnPanel& seen() const { return *seen_; }

  // Also for a macro that was just created in `file`.
  [[nodiscard]] TransferOutcome upload(const HostAddress& address, int workplace, std::string_view number,
                                       std::string_view file, MacroChange change = MacroChange::kSave,
                                       const BeforePanelWrite& before = {});
  [[nodiscard]] TransferOutcome uploadBytes(const HostAddress& address, int workplace,
                                            std::string_view number, std::string_view bytes,
                                            MacroChange change, const BeforePanelWrite& before = {});

  enum class OldContent { kKept, kLost };
  struct Deletion {
    bool asked = false;  // the panel, which answers by the name that it publishes then
    Outcome kept;        // not done: there is old content that could not be kept, so it was not asked
  };
  // Asks the panel to delete a macro, once its old content is kept, unless that may be lost. Nor is it asked
  // when the user cancels while the old content is fetched.
  [[nodiscard]] Deletion remove(const HostAddress& address, int workplace, std::string_view number,
                                OldContent old = OldContent::kKept, const BeforePanelWrite& before = {});
  // Asks the panel; as above. False when it could not be asked.
  [[nodiscard]] bool rename(const HostAddress& address, int workplace, std::string_view number,
                            const std::string& name);

  // No file moves.
  [[nodiscard]] bool demo() const { return demo_; }

  // Asks the panel to carry out a macro, which it tells of by PANEL.MACRO1.RUNNING. False as above.
  [[nodiscard]] bool run(const HostAddress& address, int workplace, std::string_view number);

  // Ends the running operation; without one it does nothing.
  void cancel();

 private:
  class Running;

  [[nodiscard]] TransferOutcome fetch(Running& running, const MacroPlace& place, std::string_view file);
  [[nodiscard]] TransferOutcome sendFile(Running& running, std::string_view file, const MacroPlace& place,
                                         MacroChange change, const BeforePanelWrite& before);
  [[nodiscard]] TransferOutcome send(Running& running, std::string_view bytes, const MacroPlace& place,
                                     MacroChange change, const BeforePanelWrite& before = {});
  [[nodiscard]] PanelStanding keep(Running& running, const MacroPlace& place, MacroChange change);
  [[nodiscard]] VerifiedSend::Old fetchOld(Running& running, const std::string& remotePath,
                                           std::chrono::seconds patience) const;
  [[nodiscard]] bool canAsk(const MacroPlace& place) const;
  // Calls a function of the workplace's macros; false when the panel at that address could not be asked. What
  // was seen of a macro that changes is forgotten.
  bool askToChange(const MacroPlace& place, const char* function,
                   const std::optional<std::string>& name = {});
  [[nodiscard]] bool ask(const MacroPlace& place, const char* function,
                         const std::optional<std::string>& name = {});

  PanelClient& client_;
  const SiteRoot& root_;
  MacroTransferFactory transfers_;
  MacroTransferFactory manyTransfers_;
  MacroReader reader_;
  bool demo_;
  MacroKeeper* keeper_ = nullptr;
  PutBackPatience patience_;
  std::shared_ptr<SeenOnPanel> seen_ = std::make_shared<SeenOnPanel>();
  bool staysConnected_ = false;
  std::unique_ptr<MacroTransfer> left_;  // by the operation before, to the host of `leftTo_`
  HostAddress leftTo_;
  Mutex mutex_;
  MacroTransfer* running_ GUARDED_BY(mutex_) = nullptr;  // of the operation under way
  bool cancelled_ GUARDED_BY(mutex_) = false;            // what runs
};

}  // namespace tessaly
