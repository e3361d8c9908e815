#pragma once

#include <optional>
#include <string>

#include <QCoreApplication>
#include <QString>

#include "app/MacroTarget.h"
#include "app/PanelTransfer.h"
#include "platform/SiteAccess.h"

namespace tessaly {

// What the panes do with macros on a panel, each with its words for the progress. One outcome is remembered:
// that of the last transfer. GUI thread; blocks in PanelTransfer's loop.
class MacroTransfers {
  Q_DECLARE_TR_FUNCTIONS(MacroTransfers)

 public:
  MacroTransfers(PanelTransfer& panel, SiteAccess site) : panel_(panel), site_(site) {}

  [[nodiscard]] bool download(const std::string& address, int workplace, const std::string& number,
                              const std::string& file);
  [[nodiscard]] bool upload(const std::string& address, int workplace, const std::string& number,
                            const std::string& file, MacroChange change);
  // Within a workplace, through the buffer file.
  [[nodiscard]] bool copy(const std::string& address, int workplace, const std::string& source,
                          const std::string& number, const std::string& buffer);
  [[nodiscard]] PanelMacros::Deletion remove(const MacroTarget& target, PanelMacros::OldContent old);
  // Whether the panel could be asked.
  [[nodiscard]] bool rename(const MacroTarget& target, const std::string& name);
  // What the panel holds there now; nothing when it did not come, of which `missing` tells that there is
  // none.
  [[nodiscard]] std::optional<std::string> look(const MacroTarget& target, bool& missing);

  // What became of the transfer, and what the panel holds after an upload. For the strip, in brackets.
  [[nodiscard]] QString reason() const;
  // A macro that was sent is there, whether or not the panel could be told so.
  [[nodiscard]] bool sent() const { return outcome_.sent(); }

 private:
  [[nodiscard]] bool run(const QString& label, const PanelTransfer::Operation& operation);

  PanelTransfer& panel_;
  SiteAccess site_;
  TransferOutcome outcome_;
};

}  // namespace tessaly
