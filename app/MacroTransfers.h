#pragma once

#include <functional>
#include <optional>
#include <string>

#include <QCoreApplication>
#include <QString>

#include "app/PanelTransfer.h"
#include "app/Sendable.h"
#include "platform/MacroKeeper.h"
#include "platform/SiteAccess.h"
#include "widgets/Message.h"

namespace tessaly {

class MacroNames;

// What the panes do with macros on a panel, each with its words for the progress. One outcome is remembered:
// that of the last transfer. GUI thread; blocks in PanelTransfer's loop.
class MacroTransfers {
  Q_DECLARE_TR_FUNCTIONS(MacroTransfers)

 public:
  // Notes with `names` what the panel is asked for, so that a missing answer is told. Observes all.
  MacroTransfers(PanelTransfer& panel, SiteAccess site, MacroNames& names)
      : panel_(panel), site_(site), names_(names) {}

  // On the transfer's thread, `around` runs what fetches, or does not.
  using Around = std::function<void(const std::function<Outcome()>& fetch)>;
  [[nodiscard]] bool download(const HostAddress& address, int workplace, const std::string& number,
                              const std::string& file, const Around& around = {});
  // Asked, where it is given, when what stands on the panel could not be kept; false: nothing is sent.
  using MayLose = std::function<bool(const Failure& why)>;
  [[nodiscard]] bool send(const MacroPlace& place, const Sendable& macro, MacroChange change,
                          const MayLose& mayLose = {});
  [[nodiscard]] PanelMacros::Deletion remove(const MacroPlace& place, PanelMacros::OldContent old);
  // Whether the panel could be asked.
  [[nodiscard]] bool rename(const MacroPlace& place, const std::string& name);
  // What a place on the disk or on a panel holds now.
  struct Present {
    std::optional<std::string> bytes = {};  // nothing when they did not come
    bool missing = false;                   // because there is no macro
    bool cancelled = false;                 // by the user, or because the window closes
    QString trouble = {};                   // why not, but for a missing one
  };
  [[nodiscard]] Present look(const MacroPlace& place);
  // A file of the disk; not done (`kCancelled`) when the user has given it up.
  [[nodiscard]] Expected<std::string> read(const std::string& file);
  // What blocks beside the panel.
  [[nodiscard]] PanelTransfer& beside() { return panel_; }
  // What this program has last fetched from a place on a panel, or sent there.
  [[nodiscard]] std::optional<ContentCheck> seen(const MacroPlace& place) const {
    return panel_.macros().seen().of(place);
  }

  // What became of the transfer, and what the panel holds after an upload. For the strip.
  [[nodiscard]] QString outcomeText() const;
  [[nodiscard]] QString reason() const;  // the same in brackets
  [[nodiscard]] bool cancelled() const { return outcome_.transfer == FtpClient::Result::kCancelled; }
  // Of what is told of a macro that was to be sent: one that was not read back, or not announced, is there
  // with a warning.
  [[nodiscard]] Grade sentGrade() const;
  // A macro that was sent is there, whether or not the panel could be told so.
  [[nodiscard]] bool sent() const { return outcome_.sent(); }

 private:
  void expect(const MacroPlace& place, const std::string& name);
  void forget(const MacroPlace& place);
  [[nodiscard]] Present lookOnPanel(const MacroPlace& place);
  [[nodiscard]] bool run(const QString& label, const PanelTransfer::Operation& operation);

  PanelTransfer& panel_;
  SiteAccess site_;
  MacroNames& names_;
  TransferOutcome outcome_;
};

}  // namespace tessaly
