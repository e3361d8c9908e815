#include <vector>

#include <QCloseEvent>
#include <QMessageBox>

#include "app/FailureText.h"
#include "app/MainWindow.h"
#include "app/MessageBoxes.h"
#include "widgets/DialogText.h"

// How the window ends: what is under way is given up, what is unsaved is asked about, what is kept is
// written.
namespace tessaly {
namespace {

constexpr int kCloseAgainMilliseconds = 100;

// Whoever keeps the places of windows hears of it now: when they are destroyed it is too late.
void hideWindowsOf(const QWidget& owner) {
  for (QWidget* widget : owner.findChildren<QWidget*>())
    if (widget->isWindow()) widget->hide();
}

}  // namespace

void MainWindow::keepState() {
  if (!settingsUnread_) static_cast<void>(writeSettings(context_.site.root, settingsNow()));
  keepPlaces();
}

bool MainWindow::end() {
  transfer_.cancel(PanelTransfer::End::kWriting);
  if (const bool ended = desk_->end(); !ended || transfer_.busy()) return false;
  keepState();
  hideWindowsOf(*this);
  connection_.close();
  return true;
}

bool MainWindow::mayClose() {
  std::vector<Pane> discarded;  // once the other pane's answer lets the window go
  for (const Pane pane : kPanes) {
    const PaneState& here = *room(pane).state;
    if (!here.copy.unsaved()) continue;
    const auto& target = here.copy.target();
    const QString macro = target ? shown(target->numberText + " - " + target->name) : tr("the open macro");
    const EventGate::Hold hold(&gate_);
    QMessageBox box(QMessageBox::Question, QLatin1String(kProgramName),
                    tr("%1: \"%2\" has unsaved changes.").arg(QLatin1String(here.descriptor.title), macro),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
      case QMessageBox::Save:
        if (open_->save(pane) != OpenMacros::Saved::kDone) return false;
        break;
      case QMessageBox::Discard:
        discarded.push_back(pane);
        break;
      default:
        return false;
    }
  }
  for (const Pane pane : discarded) room(pane).state->copy.leaveEditState();
  return true;
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (const bool ended = desk_->end(); !ended || transfer_.busy()) {
    // What runs is given up first, but for writing, which is waited for; the window closes as soon as its
    // handler has returned.
    transfer_.cancel();
    QTimer::singleShot(kCloseAgainMilliseconds, this, &MainWindow::close);
    event->ignore();
    return;
  }
  if (!mayClose()) {
    event->ignore();
    return;
  }
  // Saved or discarded by now: nothing is to be offered at the next start.
  for (const Pane pane : kPanes) room(pane).state->copy.close();
  const auto put = [&root = context_.site.root, settings = settingsNow(), unread = settingsUnread_] {
    return unread ? Outcome() : writeSettings(root, settings);
  };
  const QString label = tr("Writing the settings");
  Outcome written;
  // Behind a thread that was given up it would wait for that.
  if (!PanelTransfer::leftBehind())
    written = transfer_.write(label, put);
  else
    static_cast<void>(transfer_.finish(label, [&] { written = put(); }));
  if (!written)
    context_.site.messages.show(
        tr("The settings could not be written: %1").arg(failureText(written.failure())).toStdString());
  keepPlaces();
  hideWindowsOf(*this);
  connection_.close();
  event->accept();
}

}  // namespace tessaly
