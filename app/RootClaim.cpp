#include "app/RootClaim.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>

#include "app/MessageBoxes.h"
#include "platform/RaiseSocket.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr std::chrono::milliseconds kAnswerTime{3000};  // of a window that is busy
constexpr int kLongestName = 60;                        // characters of what a stranger's file says

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(RootClaim)
};

QString plain(const std::string& bytes) {
  QString text = shown(bytes).left(kLongestName);
  for (QChar& character : text)
    if (!character.isPrint()) character = QLatin1Char('?');
  return text;
}

QString whoAndSince(const LockHolder& holder) {
  if (holder.host.empty()) return Texts::tr("Nobody can tell who it is.");
  const QString since = QLocale().toString(QDateTime::fromSecsSinceEpoch(holder.since), QLocale::ShortFormat);
  const QString process = QString::number(holder.process);
  if (holder.user.empty())
    return Texts::tr("It runs on %1, process %2, since %3.").arg(plain(holder.host), process, since);
  return Texts::tr("%1 runs it on %2, process %3, since %4.")
      .arg(plain(holder.user), plain(holder.host), process, since);
}

// True to take over.
bool asked(SiteLock::Claim claim, const SiteLock& lock, const SiteRoot& root) {
  const QString folder = QDir::toNativeSeparators(shown(root.path().string()));
  const bool inUse = claim == SiteLock::Claim::kInUse;
  QMessageBox box(QMessageBox::Question, QLatin1String(kProgramName),
                  inUse ? Texts::tr("Another Tessaly works with the site in %1.").arg(folder)
                        : Texts::tr("The lock of the site in %1 cannot be read.").arg(folder));
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(
      (inUse ? whoAndSince(lock.holder()) : Texts::tr("Another Tessaly may work with it.")) +
      QStringLiteral("\n\n") +
      Texts::tr("If it is gone, or yours is the one that counts, take over. Two programs on one site do not "
                "spoil a file, but the later save wins."));
  const QPushButton* takeOver = box.addButton(Texts::tr("&Take Over"), QMessageBox::AcceptRole);
  box.setDefaultButton(box.addButton(Texts::tr("&Quit"), QMessageBox::RejectRole));
  box.exec();
  return box.clickedButton() == takeOver;
}

}  // namespace

RootClaim claimSite(SiteLock& lock, const SiteRoot& root) {
  // Before the lock: where the file system has none, the answer alone tells.
  if (askToRaise(root, kAnswerTime)) return RootClaim::kRaised;
  SiteLock::Claim claim = lock.claim();
  while (claim == SiteLock::Claim::kInUse || claim == SiteLock::Claim::kInTheWay) {
    if (!asked(claim, lock, root)) return RootClaim::kGivenUp;
    claim = lock.takeOver();
  }
  return RootClaim::kOurs;
}

}  // namespace tessaly
