#include "link/VerifiedSend.h"

#include <thread>

namespace tessaly {
namespace {

using Clock = std::chrono::steady_clock;
using Result = FtpClient::Result;

constexpr int kSendings = 2;      // a difference is sent once more
constexpr int kPuttingsBack = 3;  // that a panel may store wrongly
constexpr std::chrono::seconds kPutBackReading{3};

// Whether an upload that failed may have begun to write.
bool mayHaveWritten(Result result) {
  switch (result) {
    case Result::kDone:
    case Result::kStalled:
    case Result::kTooSlow:
    case Result::kCut:
    case Result::kPanelError:
    case Result::kFull:
    case Result::kCancelled:
      return true;
    case Result::kRefusedLogin:
    case Result::kNotFound:
    case Result::kUnreachable:
    case Result::kLocalFile:
    case Result::kUnreadable:
    case Result::kAltered:
    case Result::kNoLibrary:
    case Result::kFailed:
      return false;
  }
  return false;
}

// A panel that answers, and does not give the file. One that gave the old macro, garbled or not, does not
// refuse: then the new one is not there.
bool refuses(Result reading, const VerifiedSend::Old& old) {
  return reading == Result::kRefusedLogin || reading == Result::kFailed || reading == Result::kPanelError ||
         (reading == Result::kNotFound && old.fetched != Result::kDone && old.fetched != Result::kUnreadable);
}

}  // namespace

VerifiedSend::Stored VerifiedSend::look(std::string_view bytes, const Old& old, std::chrono::seconds patience,
                                        TransferOutcome& outcome) const {
  std::string back;
  outcome.reading = way_.transfer().get(remotePath_, back, patience);
  if (outcome.reading == Result::kNotFound && old.fetched == Result::kNotFound) return Stored::kOld;
  if (outcome.reading != Result::kDone) return Stored::kUnread;
  if (back == bytes) return Stored::kNew;
  return back == old.bytes ? Stored::kOld : Stored::kOther;
}

TransferOutcome VerifiedSend::taken(TransferOutcome outcome, PanelHolds holds) const {
  outcome.transfer = Result::kDone;
  outcome.holds = holds;
  outcome.announced = way_.load();
  return outcome;
}

TransferOutcome VerifiedSend::send(std::string_view bytes, const Old& old) {
  TransferOutcome outcome;
  outcome.upload = true;
  for (int sending = 0; sending < kSendings; ++sending) {
    outcome.transfer = way_.transfer().put(bytes, remotePath_);
    if (!mayHaveWritten(outcome.transfer) && sending == 0) return outcome;
    if (!mayHaveWritten(outcome.transfer) || outcome.transfer == Result::kCancelled) break;
    const Stored stored = look(bytes, old, FtpClient::kPatience, outcome);
    if (stored == Stored::kNew) return taken(outcome, PanelHolds::kNew);
    if (outcome.transfer == Result::kDone && refuses(outcome.reading, old))
      return taken(outcome, PanelHolds::kNewUnread);
    if (outcome.transfer == Result::kDone)
      outcome.transfer = outcome.reading == Result::kDone ? Result::kAltered : outcome.reading;
    // Sending again helps where the panel answers and took something else; with its disk full it does not.
    if (outcome.reading != Result::kDone || outcome.transfer == Result::kFull) break;
  }
  return putBack(bytes, old, outcome);
}

// Who cannot be reached, or is no longer to be waited for, is not written to.
VerifiedSend::Stored VerifiedSend::tryPutBack(std::string_view bytes, const Old& old,
                                              TransferOutcome& outcome) const {
  const Stored stands = look(bytes, old, kPutBackReading, outcome);
  if (stands == Stored::kOld || stands == Stored::kNew) return stands;
  if (outcome.reading == Result::kUnreachable || outcome.reading == Result::kCancelled) return stands;
  if (old.fetched == Result::kNotFound) {
    const bool asked = way_.remove();
    if (asked || stands == Stored::kUnread) return look(bytes, old, kPutBackReading, outcome);
  }
  const std::string_view wanted = old.fetched == Result::kDone ? std::string_view(*old.bytes) : bytes;
  const Result put = way_.transfer().put(wanted, remotePath_);
  if (put == Result::kDone) return look(bytes, old, FtpClient::kPatience, outcome);
  outcome.reading = put;
  return Stored::kUnread;
}

TransferOutcome VerifiedSend::putBack(std::string_view bytes, const Old& old, TransferOutcome outcome) {
  const bool cancelled = outcome.transfer == Result::kCancelled || outcome.reading == Result::kCancelled;
  if (cancelled) way_.renew();
  const auto deadline = Clock::now() + (cancelled ? patience_.afterCancel : patience_.total);
  for (int wrong = 0; wrong < kPuttingsBack;) {
    const Stored stored = tryPutBack(bytes, old, outcome);
    if (stored == Stored::kNew) return taken(outcome, PanelHolds::kNew);
    if (stored == Stored::kOld) {
      static_cast<void>(way_.load());  // its names are those of its files again
      outcome.holds = PanelHolds::kOld;
      return outcome;
    }
    if (stored == Stored::kOther) {
      ++wrong;
      outcome.reading = Result::kAltered;
    }
    if (outcome.reading == Result::kCancelled || Clock::now() + patience_.pause > deadline) break;
    std::this_thread::sleep_for(patience_.pause);
  }
  outcome.holds = PanelHolds::kUnknown;
  return outcome;
}

}  // namespace tessaly
