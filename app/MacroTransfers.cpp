#include "app/MacroTransfers.h"

#include "app/TransferText.h"
#include "link/MacroNames.h"
#include "platform/Files.h"
#include "platform/Text.h"
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

QString MacroTransfers::outcomeText() const { return transferText(outcome_); }

QString MacroTransfers::reason() const { return QStringLiteral(" (%1)").arg(outcomeText()); }

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

bool MacroTransfers::putBack(const MacroPlace& place, const std::string& bytes) {
  return run(tr("Sending macro %1 to the panel").arg(shown(place.number)), [&](PanelMacros& macros) {
    return macros.uploadBytes(place.address, place.workplace, place.number, bytes, MacroChange::kPutBack);
  });
}

// What comes of it is the panel's to say, by the names of the one workplace that are known.
void MacroTransfers::expect(const MacroTarget& target, const std::string& name) {
  if (names_.workplace() == target.workplace)
    names_.expect(parseInt(target.numberText), name, MacroNames::Clock::now());
}

void MacroTransfers::forget(const MacroTarget& target) {
  if (names_.workplace() == target.workplace) names_.forget(parseInt(target.numberText));
}

PanelMacros::Deletion MacroTransfers::remove(const MacroTarget& target, PanelMacros::OldContent old) {
  PanelMacros::Deletion deletion;
  expect(target, {});
  static_cast<void>(
      run(tr("Deleting macro %1 on the panel").arg(shown(target.numberText)), [&](PanelMacros& macros) {
        deletion = macros.remove(target.address, target.workplace, target.numberText, old);
        return TransferOutcome{};
      }));
  if (!deletion.asked) forget(target);
  return deletion;
}

bool MacroTransfers::rename(const MacroTarget& target, const std::string& name) {
  expect(target, name);
  const bool asked = panel_.macros().rename(target.workplace, target.numberText, name);
  if (!asked) forget(target);
  return asked;
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
