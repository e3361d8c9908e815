#include "app/MacroTransfers.h"

#include "app/FailureText.h"
#include "app/TransferText.h"
#include "link/MacroNames.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "widgets/DialogText.h"

namespace tessaly {

bool MacroTransfers::run(const QString& label, const PanelTransfer::Operation& operation) {
  outcome_ = panel_.run(label, operation);
  return outcome_.done();
}

// The user is asked between two tries: nothing is asked while the panel waits.
bool MacroTransfers::send(const MacroPlace& place, const Sendable& macro, MacroChange change,
                          const MayLose& mayLose) {
  std::optional<Failure> lost;
  const BeforePanelWrite onlyKept = [&lost](const PanelStanding& standing) {
    if (!standing.kept) lost = standing.kept.failure();
    return standing.kept.done();
  };
  const auto attempt = [&](const BeforePanelWrite& before) {
    return run(tr("Sending macro %1 to the panel").arg(shown(place.number)), [&](PanelMacros& macros) {
      return macros.uploadBytes(place.address, place.workplace, place.number, macro.bytes(), change, before);
    });
  };
  const bool done = attempt(mayLose ? onlyKept : BeforePanelWrite());
  return lost && mayLose(*lost) ? attempt({}) : done;
}

QString MacroTransfers::outcomeText() const { return transferText(outcome_); }

QString MacroTransfers::reason() const { return QStringLiteral(" (%1)").arg(outcomeText()); }

Grade MacroTransfers::sentGrade() const {
  if (!sent()) return Grade::kFailure;
  return outcome_.done() && outcome_.holds == PanelHolds::kNew ? Grade::kDone : Grade::kWarning;
}

bool MacroTransfers::download(const HostAddress& address, int workplace, const std::string& number,
                              const std::string& file, const Around& around) {
  return run(tr("Fetching macro %1 from the panel").arg(shown(number)), [&](PanelMacros& macros) {
    TransferOutcome came{FtpClient::Result::kFailed};
    const auto fetch = [&]() -> Outcome {
      came = macros.download(address, workplace, number, file);
      return came.unflushed() ? Failure{Failure::Kind::kUnflushed, came.detail} : Outcome();
    };
    if (around)
      around(fetch);
    else
      static_cast<void>(fetch());
    return came;
  });
}

// What comes of it is the panel's to say, by the names of the one workplace that are known.
void MacroTransfers::expect(const MacroPlace& place, const std::string& name) {
  if (names_.workplace() == place.workplace)
    names_.expect(parseInt(place.number), name, MacroNames::Clock::now());
}

void MacroTransfers::forget(const MacroPlace& place) {
  if (names_.workplace() == place.workplace) names_.forget(parseInt(place.number));
}

PanelMacros::Deletion MacroTransfers::remove(const MacroPlace& place, PanelMacros::OldContent old) {
  PanelMacros::Deletion deletion;
  // Once it is asked: what is fetched before that takes its time.
  const BeforePanelWrite expected = [&](const PanelStanding& standing) {
    if (standing.kept) expect(place, {});
    return true;
  };
  if (old == PanelMacros::OldContent::kLost) expect(place, {});
  static_cast<void>(
      run(tr("Deleting macro %1 on the panel").arg(shown(place.number)), [&](PanelMacros& macros) {
        deletion = macros.remove(place.address, place.workplace, place.number, old, expected);
        return TransferOutcome{};
      }));
  if (!deletion.asked) forget(place);
  return deletion;
}

bool MacroTransfers::rename(const MacroPlace& place, const std::string& name) {
  expect(place, name);
  const bool asked = panel_.macros().rename(place.address, place.workplace, place.number, name);
  if (!asked) forget(place);
  return asked;
}

MacroTransfers::Present MacroTransfers::lookOnPanel(const MacroPlace& place) {
  VerifiedSend::Old found{FtpClient::Result::kFailed, {}};
  const bool came =
      run(tr("Looking at macro %1 on the panel").arg(shown(place.number)), [&](PanelMacros& macros) {
        found = macros.read(place.address, place.workplace, place.number);
        return TransferOutcome{found.fetched};
      });
  // What is no macro, and came the same twice, is somebody's content all the same.
  if (came || found.bytes) return {.bytes = std::move(found.bytes)};
  if (found.fetched == FtpClient::Result::kNotFound) return {.missing = true};
  return {.cancelled = found.fetched == FtpClient::Result::kCancelled, .trouble = outcomeText()};
}

Expected<std::string> MacroTransfers::read(const std::string& file) {
  auto bytes = panel_.block<Expected<std::string>>(
      tr("Reading %1").arg(shown(file)), [root = site_.root, file] { return readFile(root, file); });
  return bytes ? *std::move(bytes) : Failure{Failure::Kind::kCancelled, {}};
}

MacroTransfers::Present MacroTransfers::look(const MacroPlace& place) {
  if (place.file.empty()) return lookOnPanel(place);
  auto bytes = read(place.file);
  if (bytes) return {.bytes = *std::move(bytes)};
  const Failure::Kind why = bytes.failure().kind;
  if (why == Failure::Kind::kMissing) return {.missing = true};
  const bool cancelled = why == Failure::Kind::kCancelled;
  if (cancelled) outcome_ = {FtpClient::Result::kCancelled};
  return {.cancelled = cancelled, .trouble = failureText(bytes.failure())};
}

}  // namespace tessaly
