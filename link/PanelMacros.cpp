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
  Running(PanelMacros& macros, const std::string& address) : macros_(macros), address_(address) { renew(); }
  ~Running() {
    const MutexLock guard(macros_.mutex_);
    macros_.running_ = nullptr;
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  // A cancelled transfer stays cancelled.
  void renew() {
    auto transfer = macros_.transfers_(address_);
    const MutexLock guard(macros_.mutex_);
    transfer_.swap(transfer);
    macros_.running_ = transfer_.get();
  }
  MacroTransfer& operator*() const { return *transfer_; }
  MacroTransfer* operator->() const { return transfer_.get(); }

 private:
  PanelMacros& macros_;
  const std::string address_;
  std::unique_ptr<MacroTransfer> transfer_;
};

PanelMacros::PanelMacros(PanelClient& client, const SiteRoot& root, MacroTransferFactory transfers,
                         MacroReader reader, bool demo)
    : client_(client),
      root_(root),
      transfers_(std::move(transfers)),
      reader_(std::move(reader)),
      demo_(demo) {}

TransferOutcome PanelMacros::download(const std::string& address, int workplace, std::string_view number,
                                      std::string_view file) {
  Running running(*this, address);
  return fetch(running, remoteMacroPath(workplace, number), file);
}

TransferOutcome PanelMacros::upload(const std::string& address, int workplace, std::string_view number,
                                    std::string_view file, MacroChange change) {
  Running running(*this, address);
  return sendFile(running, file, {{}, address, workplace, std::string(number)}, change);
}

TransferOutcome PanelMacros::uploadBytes(const std::string& address, int workplace, std::string_view number,
                                         std::string_view bytes, MacroChange change) {
  Running running(*this, address);
  return send(running, bytes, {{}, address, workplace, std::string(number)}, change);
}

TransferOutcome PanelMacros::copyOnPanel(const std::string& address, int workplace, std::string_view source,
                                         std::string_view target, std::string_view buffer) {
  Running running(*this, address);
  TransferOutcome fetched = fetch(running, remoteMacroPath(workplace, source), buffer);
  // What the buffer held before is not the macro that was asked for.
  if (!fetched.done()) return fetched;
  return sendFile(running, buffer, {{}, address, workplace, std::string(target)}, MacroChange::kCopy);
}

PanelMacros::Deletion PanelMacros::remove(const std::string& address, int workplace, std::string_view number,
                                          OldContent old) {
  if (!Workplace::of(workplace) || !MacroNumber::parse(number)) return {};
  if (old == OldContent::kKept) {
    Running running(*this, address);
    const MacroPlace place{{}, address, workplace, std::string(number)};
    const Kept kept = keep(running, place, MacroChange::kDelete);
    if (kept.old.fetched == Result::kCancelled) return {};
    if (!kept.outcome) return {false, kept.outcome};
  }
  return {askToDelete(workplace, number), {}};
}

bool PanelMacros::askToDelete(int workplace, std::string_view number) {
  ParameterList parameters;
  parameters.addString("REG", std::string(number));
  return client_.callFunction(format("PANEL.MACRO%d.DELETE", workplace), parameters);
}

bool PanelMacros::rename(int workplace, std::string_view number, const std::string& name) {
  if (!Workplace::of(workplace) || !MacroNumber::parse(number)) return false;
  ParameterList parameters;
  parameters.addString("REG", std::string(number));
  parameters.addString("NAME", name);
  return client_.callFunction(format("PANEL.MACRO%d.NAME.SET", workplace), parameters);
}

void PanelMacros::cancel() {
  const MutexLock guard(mutex_);
  if (running_ != nullptr) running_->cancel();
}

TransferOutcome PanelMacros::fetch(Running& running, const std::string& remotePath, std::string_view file) {
  if (demo_ || remotePath.empty()) return {Result::kFailed};
  if (root_.resolve(file).empty()) return {Result::kLocalFile};
  TransferOutcome outcome;
  std::string bytes;
  outcome.transfer = running->get(remotePath, bytes, FtpClient::kPatience);
  if (outcome.transfer != Result::kDone) return outcome;
  if (const Outcome read = reader_(bytes); !read) {
    outcome.transfer = Result::kUnreadable;
    outcome.detail = read.failure().text;
  } else if (!writeFile(root_, file, bytes).written()) {
    outcome.transfer = Result::kLocalFile;
  }
  return outcome;
}

VerifiedSend::Old PanelMacros::fetchOld(Running& running, const std::string& remotePath) const {
  VerifiedSend::Old old;
  std::string bytes;
  old.fetched = running->get(remotePath, bytes, kKeepingPatience);
  if (old.fetched != Result::kDone) return old;
  if (reader_(bytes)) {
    old.bytes = std::move(bytes);
    return old;
  }
  std::string again;
  old.fetched = running->get(remotePath, again, kKeepingPatience);
  if (old.fetched != Result::kDone) return old;
  if (!reader_(again)) old.fetched = Result::kUnreadable;
  if (old.fetched == Result::kDone || again == bytes) old.bytes = std::move(again);
  return old;
}

PanelMacros::Kept PanelMacros::keep(Running& running, const MacroPlace& place, MacroChange change) {
  Kept kept;
  if (demo_) return kept;
  VerifiedSend::Old& old = kept.old;
  old = fetchOld(running, remoteMacroPath(place.workplace, place.number));
  if (keeper_ == nullptr || old.fetched == Result::kNotFound) return kept;
  if (old.bytes) {
    kept.outcome = keeper_->keep(*old.bytes, place, change);
    return kept;
  }
  const Failure failure{Failure::Kind::kPanel,
                        std::string("cannot be fetched: ") + FtpClient::describe(old.fetched)};
  keeper_->notFetched(failure);
  kept.outcome = failure;
  return kept;
}

TransferOutcome PanelMacros::sendFile(Running& running, std::string_view file, const MacroPlace& place,
                                      MacroChange change) {
  const auto bytes = readFile(root_, file);
  if (!bytes) return {Result::kLocalFile, true};
  return send(running, *bytes, place, change);
}

TransferOutcome PanelMacros::send(Running& running, std::string_view bytes, const MacroPlace& place,
                                  MacroChange change) {
  const std::string remotePath = remoteMacroPath(place.workplace, place.number);
  if (demo_ || remotePath.empty()) return {Result::kFailed, true};
  const VerifiedSend::Old old = keep(running, place, change).old;
  // Who cannot be reached is not tried a second time: that would only double the wait.
  if (old.fetched == Result::kUnreachable || old.fetched == Result::kCancelled) return {old.fetched};
  VerifiedSend verified(
      {.transfer = [&]() -> MacroTransfer& { return *running; },
       .renew = [&] { running.renew(); },
       .load = [&] { return client_.callFunction("PANEL.APPLICATION.LOAD.FINISH", ParameterList()); },
       .remove = [&] { return askToDelete(place.workplace, place.number); }},
      remotePath, patience_);
  return verified.send(bytes, old);
}

}  // namespace tessaly
