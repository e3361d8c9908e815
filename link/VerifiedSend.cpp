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

// A panel that answers, and does not give the file. One that gave the old macro does not refuse: then the
// new one is not there.
bool refuses(Result reading, const VerifiedSend::Old& old) {
  return reading == Result::kRefusedLogin || reading == Result::kFailed || reading == Result::kPanelError ||
         (reading == Result::kNotFound && old.fetched != Result::kDone);
}

}  // namespace

VerifiedSend::Stored VerifiedSend::read(std::string_view bytes, TransferOutcome& outcome) const {
  std::string back;
  outcome.reading = way_.transfer().get(remotePath_, back, FtpClient::kPatience);
  if (outcome.reading != Result::kDone) return Stored::kUnread;
  return back == bytes ? Stored::kSame : Stored::kOther;
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
    const Stored stored = read(bytes, outcome);
    if (stored == Stored::kSame) return taken(outcome, PanelHolds::kNew);
    if (outcome.transfer == Result::kDone && refuses(outcome.reading, old))
      return taken(outcome, PanelHolds::kNewUnread);
    if (outcome.transfer == Result::kDone)
      outcome.transfer = stored == Stored::kOther ? Result::kAltered : outcome.reading;
    // Sending again helps where the panel answers and took something else; with its disk full it does not.
    if (stored == Stored::kUnread || outcome.transfer == Result::kFull) break;
  }
  return putBack(bytes, old, outcome);
}

VerifiedSend::Stored VerifiedSend::tryPutBack(std::string_view bytes, bool nothing,
                                              TransferOutcome& outcome) const {
  if (!nothing) {
    const Result put = way_.transfer().put(bytes, remotePath_);
    if (put == Result::kDone) return read(bytes, outcome);
    outcome.reading = put;
    return Stored::kUnread;
  }
  static_cast<void>(way_.remove());
  std::string back;
  outcome.reading = way_.transfer().get(remotePath_, back, kPutBackReading);
  if (outcome.reading == Result::kNotFound) return Stored::kSame;
  return outcome.reading == Result::kDone ? Stored::kOther : Stored::kUnread;
}

TransferOutcome VerifiedSend::putBack(std::string_view bytes, const Old& old, TransferOutcome outcome) {
  const bool known = old.fetched == Result::kDone || old.fetched == Result::kNotFound;
  const std::string_view wanted = known ? std::string_view(old.bytes) : bytes;
  const bool cancelled = outcome.transfer == Result::kCancelled || outcome.reading == Result::kCancelled;
  if (cancelled) way_.renew();
  const auto deadline = Clock::now() + (cancelled ? patience_.afterCancel : patience_.total);
  for (int wrong = 0; wrong < kPuttingsBack;) {
    const Stored stored = tryPutBack(wanted, old.fetched == Result::kNotFound, outcome);
    if (stored == Stored::kSame) {
      if (!known) return taken(outcome, PanelHolds::kNew);
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
