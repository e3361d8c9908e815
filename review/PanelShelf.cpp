#include "review/PanelShelf.h"

#include <thread>
#include <utility>

#include "link/MacroNames.h"
#include "link/WorkplaceNames.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using Result = FtpClient::Result;
using State = ShelfWrite::State;

constexpr std::chrono::milliseconds kLookAgain{100};  // whether a macro is deleted
constexpr const char* kNotTold = "the panel could not be told to read its macros again";

// kPanel for what another try may mend, as when the line was lost.
Failure::Kind kindOf(Result result) {
  using Kind = Failure::Kind;
  switch (result) {
    case Result::kCancelled:
      return Kind::kCancelled;
    case Result::kNotFound:
      return Kind::kMissing;
    case Result::kRefusedLogin:
      return Kind::kNoPermission;
    case Result::kFull:
      return Kind::kFull;
    case Result::kAltered:
      return Kind::kDiskError;
    case Result::kDone:
    case Result::kUnreachable:
    case Result::kStalled:
    case Result::kTooSlow:
    case Result::kCut:
    case Result::kPanelError:
    case Result::kLocalFile:
    case Result::kUnreadable:
    case Result::kNoLibrary:
    case Result::kFailed:
      return Kind::kPanel;
  }
  return Kind::kPanel;
}

Failure failureOf(Result result) { return {kindOf(result), FtpClient::describe(result)}; }

// What was fetched, as far as it was.
Expected<std::string> bytesOf(const VerifiedSend::Old& held) {
  if (held.bytes) return *held.bytes;
  return failureOf(held.fetched);
}

ShelfWrite writeOf(const TransferOutcome& sent) {
  switch (sent.holds) {
    case PanelHolds::kNew:
      return {State::kWritten, {}, sent.announced ? std::string() : kNotTold};
    case PanelHolds::kNewUnread:
      return {State::kUnverified, {}, sent.describe()};
    case PanelHolds::kAsBefore:
    case PanelHolds::kOld:
      return {State::kAsBefore, {kindOf(sent.transfer), sent.describe()}};
    case PanelHolds::kUnknown:
      return {State::kUnknown, {kindOf(sent.transfer), sent.describe()}};
  }
  return {};
}

}  // namespace

PanelShelf::PanelShelf(PanelMacros& macros, PanelClient& client, MacroHistory& history, HostAddress address,
                       int workplace)
    : macros_(macros),
      client_(client),
      history_(history),
      address_(std::move(address)),
      workplace_(workplace),
      deletion_(MacroNames::kConfirmation) {}

std::string PanelShelf::title() const {
  return "workplace " + std::to_string(workplace_) + " of " + address_.text();
}

MacroPlace PanelShelf::place(MacroNumber number) const { return {{}, address_, workplace_, number.text()}; }

// Names come over the line, macros from the address.
Outcome PanelShelf::whole() const {
  if (client_.state() != kPanelConnected || client_.leadsTo(address_)) return {};
  return Failure{Failure::Kind::kPanel, "the line leads to another panel, " + client_.host().text()};
}

Expected<std::vector<MacroShelf::Held>> PanelShelf::list() {
  if (Outcome one = whole(); !one) return one.failure();
  auto names = readWorkplaceNames(client_, workplace_, cancelled_);
  if (!names) return names.failure();
  if (Outcome one = whole(); !one) return one.failure();  // the line may have been made anew meanwhile
  std::vector<Held> held;
  for (auto& [number, name] : *names) {
    if (const auto known = MacroNumber::of(number)) held.push_back({*known, displayUtf8(name)});
  }
  return held;
}

Expected<std::string> PanelShelf::read(MacroNumber number) {
  if (cancelled_) return failureOf(Result::kCancelled);
  return bytesOf(macros_.read(address_, workplace_, number.text()));
}

Outcome PanelShelf::writable() const {
  if (macros_.demo()) return Failure{Failure::Kind::kPanel, "nothing is sent in the demonstration"};
  if (client_.state() == kPanelConnected) return whole();
  return Failure{Failure::Kind::kPanel, "the panel is not connected"};
}

Outcome PanelShelf::ask(const PanelStanding& standing, const BeforeWrite& before) {
  const ShelfStanding found{bytesOf(standing.old), history_.takeKept()};
  // What cannot even be fetched is all the same sent over, as every save does it; that is told.
  if (found.bytes && !standing.kept) return standing.kept;
  if (cancelled_) return failureOf(Result::kCancelled);
  return before ? before(found) : Outcome();
}

ShelfWrite PanelShelf::write(MacroNumber number, std::string_view bytes, MacroChange change,
                             const BeforeWrite& before) {
  if (cancelled_) return {State::kAsBefore, failureOf(Result::kCancelled)};
  if (Outcome able = writable(); !able) return {State::kAsBefore, able.failure()};
  static_cast<void>(history_.takeKept());
  Outcome asked;
  const TransferOutcome sent = macros_.uploadBytes(
      address_, workplace_, number.text(), bytes, change,
      [&](const PanelStanding& standing) { return (asked = ask(standing, before)).done(); });
  if (!asked) return {State::kAsBefore, asked.failure()};
  return writeOf(sent);
}

ShelfWrite PanelShelf::remove(MacroNumber number, const BeforeWrite& before) {
  if (cancelled_) return {State::kAsBefore, failureOf(Result::kCancelled)};
  if (Outcome able = writable(); !able) return {State::kAsBefore, able.failure()};
  static_cast<void>(history_.takeKept());
  Outcome asked = failureOf(Result::kCancelled);
  const PanelMacros::Deletion deletion =
      macros_.remove(address_, workplace_, number.text(), PanelMacros::OldContent::kKept,
                     [&](const PanelStanding& standing) {
                       if (!standing.old.bytes)
                         asked = failureOf(standing.old.fetched);
                       else
                         asked = ask(standing, before);
                       return asked.done();
                     });
  if (!asked) return {State::kAsBefore, asked.failure()};
  if (!deletion.kept) return {State::kAsBefore, deletion.kept.failure()};
  if (!deletion.asked) return {State::kAsBefore, {Failure::Kind::kPanel, "the panel could not be asked"}};
  return awaitDeletion(number);
}

// The panel does not answer; it publishes an empty name, and its file goes.
ShelfWrite PanelShelf::awaitDeletion(MacroNumber number) {
  const auto deadline = std::chrono::steady_clock::now() + deletion_;
  while (true) {
    const VerifiedSend::Old held = macros_.read(address_, workplace_, number.text());
    if (held.fetched == Result::kNotFound) return {State::kWritten};
    if (!held.bytes) return {State::kUnknown, failureOf(held.fetched)};
    if (std::chrono::steady_clock::now() > deadline)
      return {State::kUnknown, {Failure::Kind::kPanel, "the panel has not deleted the macro"}};
    std::this_thread::sleep_for(kLookAgain);
  }
}

void PanelShelf::cancel() {
  cancelled_ = true;
  macros_.cancel();
}

}  // namespace tessaly
