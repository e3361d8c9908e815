#include "app/MacroTransfers.h"

#include "app/TransferText.h"
#include "platform/Files.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

// Holds what a panel has while it is looked at.
constexpr const char* kLookFolder = "recovery";
constexpr const char* kLookFile = "recovery\\look.mac";

}  // namespace

bool MacroTransfers::run(const QString& label, const PanelTransfer::Operation& operation) {
  outcome_ = panel_.run(label, operation);
  return outcome_.done();
}

QString MacroTransfers::reason() const { return QStringLiteral(" (%1)").arg(transferText(outcome_)); }

bool MacroTransfers::download(const std::string& address, int workplace, const std::string& number,
                              const std::string& file) {
  return run(tr("Fetching macro %1 from the panel").arg(shown(number)),
             [&](PanelMacros& macros) { return macros.download(address, workplace, number, file); });
}

bool MacroTransfers::upload(const std::string& address, int workplace, const std::string& number,
                            const std::string& file, MacroChange change) {
  return run(tr("Sending macro %1 to the panel").arg(shown(number)),
             [&](PanelMacros& macros) { return macros.upload(address, workplace, number, file, change); });
}

bool MacroTransfers::copy(const std::string& address, int workplace, const std::string& source,
                          const std::string& number, const std::string& buffer) {
  return run(tr("Copying macro %1 on the panel").arg(shown(source)), [&](PanelMacros& macros) {
    return macros.copyOnPanel(address, workplace, source, number, buffer);
  });
}

PanelMacros::Deletion MacroTransfers::remove(const MacroTarget& target, PanelMacros::OldContent old) {
  PanelMacros::Deletion deletion;
  static_cast<void>(
      run(tr("Deleting macro %1 on the panel").arg(shown(target.numberText)), [&](PanelMacros& macros) {
        deletion = macros.remove(target.address, target.workplace, target.numberText, old);
        return TransferOutcome{};
      }));
  return deletion;
}

bool MacroTransfers::rename(const MacroTarget& target, const std::string& name) {
  return panel_.macros().rename(target.workplace, target.numberText, name);
}

std::optional<std::string> MacroTransfers::look(const MacroTarget& target, bool& missing) {
  missing = false;
  if (!makeFolder(site_.root, kLookFolder)) return std::nullopt;
  const bool came =
      run(tr("Looking at macro %1 on the panel").arg(shown(target.numberText)), [&](PanelMacros& macros) {
        return macros.download(target.address, target.workplace, target.numberText, kLookFile);
      });
  missing = outcome_.transfer == FtpClient::Result::kNotFound;
  if (!came) return std::nullopt;
  auto bytes = readFile(site_.root, kLookFile);
  static_cast<void>(removeFile(site_.root, kLookFile));
  return bytes ? std::optional(*std::move(bytes)) : std::nullopt;
}

}  // namespace tessaly
