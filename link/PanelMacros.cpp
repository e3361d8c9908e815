#include "link/PanelMacros.h"

#include <algorithm>
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

constexpr const char* kFtpUser = "target";
constexpr const char* kFtpSecret = "vintrosa";

class FtpTransfer final : public MacroTransfer {
 public:
  FtpTransfer(const std::string& host, std::uint16_t port) : client_(host, port, {kFtpUser, kFtpSecret}) {}

  Result get(const std::string& remotePath, const std::string& hostPath,
             const FtpClient::Check& check) override {
    return client_.get(remotePath, hostPath, check);
  }
  Result getSoon(const std::string& remotePath, const std::string& hostPath) override {
    return client_.get(remotePath, hostPath, {}, kKeepingPatience);
  }
  Result put(const std::string& hostPath, const std::string& remotePath) override {
    return client_.put(hostPath, remotePath);
  }
  void cancel() override { client_.cancel(); }

 private:
  FtpClient client_;
};

// Whether a failed upload had begun to write.
bool mayLeaveAPart(Result result) {
  switch (result) {
    case Result::kStalled:
    case Result::kTooSlow:
    case Result::kCut:
    case Result::kPanelError:
    case Result::kFull:
    case Result::kCancelled:
      return true;
    case Result::kDone:
    case Result::kRefusedLogin:
    case Result::kNotFound:
    case Result::kUnreachable:
    case Result::kLocalFile:
    case Result::kUnreadable:
    case Result::kNoLibrary:
    case Result::kFailed:
      return false;
  }
  return false;
}

}  // namespace

std::string remoteMacroPath(int workplace, std::string_view number) {
  if (!Workplace::of(workplace) || !MacroNumber::parse(number)) return {};
  return format("/flash/data/PANEL/macro/workplace%d/", workplace) + macroFileName(number);
}

bool TransferOutcome::leavesAPart() const { return upload && mayLeaveAPart(transfer); }

std::string TransferOutcome::describe() const {
  if (transfer == Result::kDone && upload && !announced) {
    return "the macro was sent, but the panel could not be told to read it";
  }
  std::string text = FtpClient::describe(transfer);
  if (!detail.empty()) text += " (" + detail + ")";
  if (leavesAPart()) text += "; the panel may hold a part of the macro";
  return text;
}

MacroTransferFactory ftpTransfers(std::uint16_t port) {
  return [port](const std::string& host) { return std::make_unique<FtpTransfer>(host, port); };
}

// The operation under way: its transfer, within reach of cancel.
class PanelMacros::Running {
 public:
  Running(PanelMacros& macros, const std::string& address)
      : macros_(macros), transfer_(macros.transfers_(address.substr(0, address.find(':')))) {
    const MutexLock guard(macros_.mutex_);
    macros_.running_ = transfer_.get();
  }
  ~Running() {
    const MutexLock guard(macros_.mutex_);
    macros_.running_ = nullptr;
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  MacroTransfer& operator*() const { return *transfer_; }

 private:
  PanelMacros& macros_;
  std::unique_ptr<MacroTransfer> transfer_;
};

PanelMacros::PanelMacros(PanelClient& client, const SiteRoot& root, MacroTransferFactory transfers, bool demo,
                         MacroReader reader)
    : client_(client),
      root_(root),
      transfers_(std::move(transfers)),
      demo_(demo),
      reader_(std::move(reader)) {}

TransferOutcome PanelMacros::download(const std::string& address, int workplace, std::string_view number,
                                      std::string_view file) {
  const Running running(*this, address);
  return fetch(*running, remoteMacroPath(workplace, number), file);
}

TransferOutcome PanelMacros::upload(const std::string& address, int workplace, std::string_view number,
                                    std::string_view file, MacroChange change) {
  const Running running(*this, address);
  return send(*running, file, {{}, address, workplace, std::string(number)}, change);
}

TransferOutcome PanelMacros::copyOnPanel(const std::string& address, int workplace, std::string_view source,
                                         std::string_view target, std::string_view buffer) {
  const Running running(*this, address);
  TransferOutcome fetched = fetch(*running, remoteMacroPath(workplace, source), buffer);
  // What the buffer held before is not the macro that was asked for.
  if (!fetched.done()) return fetched;
  return send(*running, buffer, {{}, address, workplace, std::string(target)}, MacroChange::kCopy);
}

PanelMacros::Deletion PanelMacros::remove(const std::string& address, int workplace, std::string_view number,
                                          OldContent old) {
  if (!Workplace::of(workplace) || !MacroNumber::parse(number)) return {};
  if (old == OldContent::kKept) {
    const Running running(*this, address);
    const MacroPlace place{{}, address, workplace, std::string(number)};
    const Kept kept = keep(*running, place, MacroChange::kDelete);
    if (kept.fetched == Result::kCancelled) return {};
    if (!kept.outcome) return {false, kept.outcome};
  }
  ParameterList parameters;
  parameters.addString("REG", std::string(number));
  return {client_.callFunction(format("PANEL.MACRO%d.DELETE", workplace), parameters), {}};
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

TransferOutcome PanelMacros::fetch(MacroTransfer& transfer, const std::string& remotePath,
                                   std::string_view file) {
  if (demo_ || remotePath.empty()) return {Result::kFailed};
  const std::string hostPath = root_.resolve(file).string();
  if (hostPath.empty()) return {Result::kLocalFile};
  TransferOutcome outcome;
  const auto wanted = [&](std::string_view bytes) {
    const Outcome read = reader_(bytes);
    if (!read) outcome.detail = read.failure().text;
    return read.done();
  };
  outcome.transfer = transfer.get(remotePath, hostPath, reader_ ? wanted : FtpClient::Check());
  return outcome;
}

PanelMacros::Kept PanelMacros::keep(MacroTransfer& transfer, const MacroPlace& place, MacroChange change) {
  if (keeper_ == nullptr || demo_) return {};
  const auto file = keeper_->fetchFile();
  if (!file) {
    keeper_->notFetched(file.failure());
    return {Result::kDone, file.failure()};
  }
  const Result result = transfer.getSoon(remoteMacroPath(place.workplace, place.number), *file);
  if (result == Result::kDone) return {result, keeper_->keepFetched(*file, place, change)};
  if (result == Result::kNotFound) return {result, {}};
  const Failure failure{Failure::Kind::kMissing,
                        std::string("cannot be fetched: ") + FtpClient::describe(result)};
  keeper_->notFetched(failure);
  return {result, failure};
}

TransferOutcome PanelMacros::send(MacroTransfer& transfer, std::string_view file, const MacroPlace& place,
                                  MacroChange change) {
  const std::string remotePath = remoteMacroPath(place.workplace, place.number);
  if (demo_ || remotePath.empty()) return {Result::kFailed, true};
  const std::string hostPath = root_.resolve(file).string();
  if (hostPath.empty()) return {Result::kLocalFile, true};
  // Nothing is lost where nothing can be sent. Who cannot be reached is not tried a second time: that would
  // only double the wait.
  const Result kept = canOpen(root_, file) ? keep(transfer, place, change).fetched : Result::kDone;
  if (kept == Result::kUnreachable || kept == Result::kCancelled) return {kept};
  TransferOutcome outcome{transfer.put(hostPath, remotePath), true};
  if (outcome.transfer == Result::kDone) {
    outcome.announced = client_.callFunction("PANEL.APPLICATION.LOAD.FINISH", ParameterList());
  }
  return outcome;
}

}  // namespace tessaly
