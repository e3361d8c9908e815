#include "app/FailureText.h"

#include <QCoreApplication>

#include "app/PanelTransfer.h"
#include "app/TransferText.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

class FailureText {
  Q_DECLARE_TR_FUNCTIONS(FailureText)

 public:
  static QString of(const Failure& failure) {
    switch (failure.kind) {
      case Failure::Kind::kMissing:
        return tr("the file or its folder is missing");
      case Failure::Kind::kInTheWay:
        return tr("something that is no file stands there");
      case Failure::Kind::kNoPermission:
        return tr("it is not allowed here");
      case Failure::Kind::kWriteProtected:
        return tr("the file is write-protected");
      case Failure::Kind::kReadOnlyDisk:
        return tr("the disk cannot be written");
      case Failure::Kind::kFull:
        return tr("the disk is full");
      case Failure::Kind::kDiskError:
        return tr("the disk reports an error");
      case Failure::Kind::kTooLarge:
        return tr("the file is too large");
      case Failure::Kind::kNoMemory:
        return tr("there is not enough memory");
      case Failure::Kind::kUnflushed:
        return tr("it is done, but may not survive a power cut");
      case Failure::Kind::kNotXml:
        return tr("the file cannot be parsed");
      case Failure::Kind::kNotKept:
        return tr("saving would lose a part of the file: %1").arg(shown(failure.text));
      case Failure::Kind::kNoMacro:
        return tr("the file holds no macro");
      case Failure::Kind::kNoCommand:
        return tr("there is no such command");
      case Failure::Kind::kTextNotHeld:
        return tr("the file's encoding cannot hold a text: %1").arg(shown(failure.text));
      case Failure::Kind::kNothingTaken:
        return tr("no command takes the value");
      case Failure::Kind::kNoFragment:
        return tr("what is to be taken over %1").arg(shown(failure.text));
      case Failure::Kind::kChanged:
        return tr("it has changed meanwhile");
      case Failure::Kind::kPanel:
        if (QString known = transferText(failure.text); !known.isEmpty()) return known;
        return tr("the panel: %1").arg(shown(failure.text));
      case Failure::Kind::kCancelled:
        if (failure.text == kMayBeDoneYet) return tr("it was cancelled, but the disk may do it yet");
        return tr("it was cancelled");
      case Failure::Kind::kNoSnapshot:
        return tr("the snapshot: %1").arg(shown(failure.text));
      case Failure::Kind::kInUse:
        return tr("another program is changing it");
    }
    return {};
  }
};

}  // namespace

QString failureText(const Failure& failure) { return FailureText::of(failure); }

QString inBrackets(const Outcome& outcome) {
  return outcome ? QString() : QStringLiteral(" (%1)").arg(failureText(outcome.failure()));
}

}  // namespace tessaly
