#include "app/TransferText.h"

#include <QCoreApplication>

namespace tessaly {

namespace {

class TransferText {
  Q_DECLARE_TR_FUNCTIONS(TransferText)

 public:
  static QString of(FtpClient::Result result) {
    switch (result) {
      case FtpClient::Result::kDone:
        return tr("the transfer is done");
      case FtpClient::Result::kRefusedLogin:
        return tr("the panel refused the login");
      case FtpClient::Result::kNotFound:
        return tr("the panel has no such file or folder");
      case FtpClient::Result::kUnreachable:
        return tr("the panel cannot be reached");
      case FtpClient::Result::kStalled:
        return tr("the panel does not answer");
      case FtpClient::Result::kTooSlow:
        return tr("the panel is too slow");
      case FtpClient::Result::kCut:
        return tr("the connection was cut");
      case FtpClient::Result::kPanelError:
        return tr(
            "the panel broke off with an error of its own (451), such as a file that it cannot read or "
            "write");
      case FtpClient::Result::kFull:
        return tr("the panel's disk is full");
      case FtpClient::Result::kLocalFile:
        return tr("the local file cannot be read or written");
      case FtpClient::Result::kUnreadable:
        return tr("what the panel sent is no macro");
      case FtpClient::Result::kAltered:
        return tr("the panel stored something else than what was sent");
      case FtpClient::Result::kCancelled:
        return tr("the transfer was cancelled");
      case FtpClient::Result::kNoLibrary:
        return tr("the transfer library (libcurl4) cannot be loaded; is it installed?");
      case FtpClient::Result::kFailed:
        return tr("the transfer failed");
    }
    return {};
  }

  static QString of(const TransferOutcome& outcome) {
    switch (outcome.holds) {
      case PanelHolds::kAsBefore:
        return of(outcome.transfer);
      case PanelHolds::kNew:
        return outcome.announced ? tr("verified") : unannounced();
      case PanelHolds::kNewUnread:
        return outcome.announced ? tr("not verified: %1").arg(of(outcome.reading))
                                 : tr("%1; not verified: %2").arg(unannounced(), of(outcome.reading));
      case PanelHolds::kOld:
        return tr("%1; the panel holds again what it held before, verified").arg(of(outcome.transfer));
      case PanelHolds::kUnknown:
        return tr("%1; what the panel holds now is unknown: %2")
            .arg(of(outcome.transfer), of(outcome.reading));
    }
    return {};
  }

 private:
  static QString unannounced() {
    return tr("the macro was sent, but the panel could not be told to read it");
  }
};

}  // namespace

QString transferText(const TransferOutcome& outcome) { return TransferText::of(outcome); }

QString transferText(std::string_view english) {
  for (int i = 0; i <= static_cast<int>(FtpClient::Result::kFailed); ++i) {
    const auto result = static_cast<FtpClient::Result>(i);
    if (english == FtpClient::describe(result)) return TransferText::of(result);
  }
  return {};
}

}  // namespace tessaly
