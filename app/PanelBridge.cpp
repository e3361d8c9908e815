#include "app/PanelBridge.h"

#include <QCoreApplication>

#include "app/PaneDescriptor.h"

namespace tessaly {

PanelBridge::PanelBridge(QObject* parent) : QObject(parent) {
  for (const Pane pane : kPanes) {
    QTimer& timer = timers_[index(pane)];
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, this, [this, pane] { emit timedOut(pane); });
  }
}

void PanelBridge::startTimer(Pane pane, std::chrono::milliseconds period) {
  timers_[index(pane)].start(period);
}

void PanelBridge::killTimer(Pane pane) { timers_[index(pane)].stop(); }

void PanelBridge::showConnection(Pane pane, const PaneConnectionDisplay& display) {
  emit connectionShown(pane, display);
}

void PanelBridge::rebuildLists(Pane pane) { emit listsWanted(pane); }

void PanelBridge::showDemoListing() { emit demoWanted(); }

void PanelBridge::rebuildWorkplaces(Pane pane) { mark(marks_[index(pane)].workplaces); }

void PanelBridge::rebuildMacros(Pane pane) { mark(marks_[index(pane)].macros); }

void PanelBridge::postConnected(Pane pane) {
  QCoreApplication::postEvent(
      parent(),
      new QEvent(static_cast<QEvent::Type>(pane == Pane::kA ? kConnectedMessageA : kConnectedMessageB)));
}

void PanelBridge::mark(std::atomic<bool>& flag) {
  flag = true;
  if (!queued_.exchange(true)) post_([this] { deliver(); });
}

void PanelBridge::deliver() {
  queued_ = false;
  for (const Pane pane : kPanes)
    if (marks_[index(pane)].workplaces.exchange(false)) emit workplacesChanged(pane);
  for (const Pane pane : kPanes)
    if (marks_[index(pane)].macros.exchange(false)) emit macroNamesChanged(pane);
}

}  // namespace tessaly
