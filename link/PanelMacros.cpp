#include "link/PanelMacros.h"

#include <chrono>
#include <utility>

#include "link/Pane.h"
#include "platform/Files.h"
#include "platform/MacroNumber.h"
#include "platform/Text.h"
#include "platform/Workplace.h"

namespace tessaly {
namespace {

using Result = FtpClient::Result;

// Old content that has not come within this time without a byte is given up.
constexpr std::chrono::seconds kKeepingPatience{3};

}  // namespace

std::string remoteMacroPath(int workplace, std::string_view number) {
  if (!Workplace::of(workplace) || !MacroNumber::parse(number)) return {};
  return format("/flash/data/PANEL/macro/workplace%d/", workplace) + macroFileName(number);
}

// The operation under way: its transfer, within reach of cancel.
class PanelMacros::Running {
 public:
  Running(PanelMacros& macros, const HostAddress& address) : macros_(macros), address_(address) {
    start(macros_.leftTo_ == address ? std::move(macros_.left_) : nullptr);
    macros_.left_.reset();
  }
  ~Running() {
    const MutexLock guard(macros_.mutex_);
    macros_.running_ = nullptr;
    if (!macros_.staysConnected_ || macros_.cancelled_) return;
    macros_.left_ = std::move(transfer_);
    macros_.leftTo_ = address_;
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  // A cancelled transfer stays cancelled.
  void renew() { start(nullptr); }
  MacroTransfer& operator*() const { return *transfer_; }
  MacroTransfer* operator->() const { return transfer_.get(); }

 private:
  void start(std::unique_ptr<MacroTransfer> transfer) {
    if (!transfer) transfer = macros_.transfers_(address_.text());
    const MutexLock guard(macros_.mutex_);
    transfer_.swap(transfer);
    macros_.running_ = transfer_.get();
    macros_.cancelled_ = false;
  }

  PanelMacros& macros_;
  const HostAddress address_;
  std::unique_ptr<MacroTransfer> transfer_;
};

PanelMacros::PanelMacros(PanelClient& client, const SiteRoot& root, MacroTransferFactory transfers,
                         MacroReader reader, bool demo)
    : client_(client),
      root_(root),
      transfers_(std::move(transfers)),
      reader_(std::move(reader)),
      demo_(demo) {}

std::unique_ptr<PanelMacros> PanelMacros::forMany() const {
  auto macros = std::make_unique<PanelMacros>(client_, root_, manyTransfers_ ? manyTransfers_ : transfers_,
                                              reader_, demo_);
  macros->stayConnected();
  macros->waitFor(patience_);
  macros->seen_ = seen_;
  return macros;
}

TransferOutcome PanelMacros::download(const HostAddress& address, int workplace, std::string_view number,
                                      std::string_view file) {
  Running running(*this, address);
  return fetch(running, {{}, address, workplace, std::string(number)}, file);
}

VerifiedSend::Old PanelMacros::read(const HostAddress& address, int workplace, std::string_view number) {
  const std::string remotePath = remoteMacroPath(workplace, number);
  if (demo_ || remotePath.empty()) return {Result::kFailed, {}};
  Running running(*this, address);
  return fetchOld(running, remotePath, FtpClient::kPatience);
}

TransferOutcome PanelMacros::upload(const HostAddress& address, int workplace, std::string_view number,
                                    std::string_view file, MacroChange change,
                                    const BeforePanelWrite& before) {
  Running running(*this, address);
  return sendFile(running, file, {{}, address, workplace, std::string(number)}, change, before);
}

TransferOutcome PanelMacros::uploadBytes(const HostAddress& address, int workplace, std::string_view number,
                                         std::string_view bytes, MacroChange change,
                                         const BeforePanelWrite& before) {
  Running running(*this, address);
  return send(running, bytes, {{}, address, workplace, std::string(number)}, change, before);
}

PanelMacros::Deletion PanelMacros::remove(const HostAddress& address, int workplace, std::string_view number,
                                          OldContent old, const BeforePanelWrite& before) {
  const MacroPlace place{{}, address, workplace, std::string(number)};
  if (!canAsk(place)) return {};
  if (old == OldContent::kKept) {
    Running running(*this, address);
    const PanelStanding standing = keep(running, place, MacroChange::kDelete);
    if (standing.old.fetched == Result::kCancelled || (before && !before(standing))) return {};
    if (!standing.kept) return {false, standing.kept};
  }
  return {askToChange(place, "DELETE"), {}};
}

bool PanelMacros::rename(const HostAddress& address, int workplace, std::string_view number,
                         const std::string& name) {
  return askToChange({{}, address, workplace, std::string(number)}, "NAME.SET", name);
}

bool PanelMacros::run(const HostAddress& address, int workplace, std::string_view number) {
  return ask({{}, address, workplace, std::string(number)}, "RUN");
}

bool PanelMacros::askToChange(const MacroPlace& place, const char* function,
                              const std::optional<std::string>& name) {
  seen_->forget(place.workplace, place.number);
  return ask(place, function, name);
}

// At another panel it would strike a macro that nobody has looked at.
bool PanelMacros::canAsk(const MacroPlace& place) const {
  return Workplace::of(place.workplace) && MacroNumber::parse(place.number) && client_.leadsTo(place.address);
}

bool PanelMacros::ask(const MacroPlace& place, const char* function, const std::optional<std::string>& name) {
  if (!canAsk(place)) return false;
  ParameterList parameters;
  parameters.addString("REG", place.number);
  if (name) parameters.addString("NAME", *name);
  return client_.callFunction(format("PANEL.MACRO%d.%s", place.workplace, function), parameters);
}

void PanelMacros::cancel() {
  const MutexLock guard(mutex_);
  if (running_ == nullptr) return;
  running_->cancel();
  cancelled_ = true;
}

TransferOutcome PanelMacros::fetch(Running& running, const MacroPlace& place, std::string_view file) {
  const std::string remotePath = remoteMacroPath(place.workplace, place.number);
  if (demo_ || remotePath.empty()) return {Result::kFailed};
  if (root_.resolve(file).empty()) return {Result::kLocalFile};
  TransferOutcome outcome;
  std::string bytes;
  outcome.transfer = running->get(remotePath, bytes, FtpClient::kPatience);
  if (outcome.transfer != Result::kDone) return outcome;
  if (const Outcome read = reader_(bytes); !read) {
    outcome.transfer = Result::kUnreadable;
    outcome.detail = read.failure().text;
    return outcome;
  }
  const Outcome put = writeFile(root_, file, bytes);
  if (!put) outcome.detail = put.failure().text;
  if (put.written())
    seen_->note(place, bytes);
  else
    outcome.transfer = Result::kLocalFile;
  return outcome;
}

VerifiedSend::Old PanelMacros::fetchOld(Running& running, const std::string& remotePath,
                                        std::chrono::seconds patience) const {
  VerifiedSend::Old old;
  std::string bytes;
  old.fetched = running->get(remotePath, bytes, patience);
  if (old.fetched != Result::kDone) return old;
  if (reader_(bytes)) {
    old.bytes = std::move(bytes);
    return old;
  }
  std::string again;
  old.fetched = running->get(remotePath, again, patience);
  if (old.fetched != Result::kDone) return old;
  if (!reader_(again)) old.fetched = Result::kUnreadable;
  if (old.fetched == Result::kDone || again == bytes) old.bytes = std::move(again);
  return old;
}

PanelStanding PanelMacros::keep(Running& running, const MacroPlace& place, MacroChange change) {
  PanelStanding standing;
  if (demo_) return standing;
  VerifiedSend::Old& old = standing.old;
  old = fetchOld(running, remoteMacroPath(place.workplace, place.number), kKeepingPatience);
  if (keeper_ == nullptr || old.fetched == Result::kNotFound) return standing;
  if (old.bytes) {
    standing.kept = keeper_->keep(*old.bytes, place, change);
    return standing;
  }
  const Failure failure{Failure::Kind::kPanel,
                        std::string("cannot be fetched: ") + FtpClient::describe(old.fetched)};
  keeper_->notFetched(failure);
  standing.kept = failure;
  return standing;
}

TransferOutcome PanelMacros::sendFile(Running& running, std::string_view file, const MacroPlace& place,
                                      MacroChange change, const BeforePanelWrite& before) {
  const auto bytes = readFile(root_, file);
  if (!bytes) return {Result::kLocalFile, true};
  return send(running, *bytes, place, change, before);
}

TransferOutcome PanelMacros::send(Running& running, std::string_view bytes, const MacroPlace& place,
                                  MacroChange change, const BeforePanelWrite& before) {
  const std::string remotePath = remoteMacroPath(place.workplace, place.number);
  if (demo_ || remotePath.empty()) return {Result::kFailed, true};
  const PanelStanding standing = keep(running, place, change);
  VerifiedSend::Old old = standing.old;
  // Who cannot be reached is not tried a second time: that would only double the wait.
  if (old.fetched == Result::kUnreachable || old.fetched == Result::kCancelled) return {old.fetched};
  if (before && !before(standing)) return {Result::kCancelled};
  // A panel that refuses a file may say that there is none: what was seen there is not deleted for that.
  if (old.fetched == Result::kNotFound && seen_->of(place)) old.fetched = Result::kFailed;
  VerifiedSend verified({.transfer = [&]() -> MacroTransfer& { return *running; },
                         .renew = [&] { running.renew(); },
                         .load =
                             [&] {
                               const bool called =
                                   client_.callFunction("PANEL.APPLICATION.LOAD.FINISH", ParameterList());
                               return called && client_.leadsTo(place.address);
                             },
                         .remove = [&] { return askToChange(place, "DELETE"); }},
                        remotePath, patience_);
  TransferOutcome sent = verified.send(bytes, old);
  if (sent.sent()) seen_->note(place, bytes);
  return sent;
}

}  // namespace tessaly
