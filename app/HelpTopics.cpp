#include "app/HelpTopics.h"

#include <algorithm>

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QWhatsThis>

#include "app/GuideWindow.h"

namespace tessaly {

namespace {

constexpr HelpTopic kTopics[] = {{"applications", "guide.html#find-a-macro-on-the-disk"},
                                 {"controlPanels", "guide.html#find-a-macro-on-the-disk"},
                                 {"workplaces", "guide.html#find-a-macro-on-the-disk"},
                                 {"macros", "guide.html#find-a-macro-on-the-disk"},
                                 {"harddisk", "guide.html#find-a-macro-on-the-disk"},
                                 {"panel", "guide.html#connect-to-a-panel"},
                                 {"address", "guide.html#connect-to-a-panel"},
                                 {"connectButton", "guide.html#connect-to-a-panel"},
                                 {"createMacro", "guide.html#create-copy-rename-and-delete-macros"},
                                 {"copyMacro", "guide.html#create-copy-rename-and-delete-macros"},
                                 {"renameMacro", "guide.html#create-copy-rename-and-delete-macros"},
                                 {"deleteMacro", "guide.html#create-copy-rename-and-delete-macros"},
                                 {"commands", "guide.html#delete-move-and-copy-commands"},
                                 {"deleteCommand", "guide.html#delete-move-and-copy-commands"},
                                 {"showDestination", "guide.html#read-the-commands"},
                                 {"showRaw", "guide.html#read-the-commands"},
                                 {"useTabs", "guide.html#read-the-commands"},
                                 {"newClassic", "guide.html#build-a-classic-command"},
                                 {"newCorvane", "guide.html#build-a-command"},
                                 {"newMultiple", "guide.html#build-many-commands-at-once"},
                                 {"modifyCommand", "guide.html#change-a-command"},
                                 {"updateData", "guide.html#fetch-current-values-from-the-panel"},
                                 {"saveChanges", "guide.html#save-or-discard"},
                                 {"discardChanges", "guide.html#save-or-discard"},
                                 {"strip", "guide.html#what-to-do-when"},
                                 {"FirstStartDialog", "guide.html#first-start"},
                                 {"CreateMacroDialog", "guide.html#create-copy-rename-and-delete-macros"},
                                 {"CopyMacroDialog", "guide.html#create-copy-rename-and-delete-macros"},
                                 {"RenameMacroDialog", "guide.html#create-copy-rename-and-delete-macros"},
                                 {"CreateCommandDialog", "guide.html#build-a-command"},
                                 {"ModifyCommandDialog", "guide.html#change-a-command"},
                                 {"MultipleCommandsDialog", "guide.html#build-many-commands-at-once"},
                                 {"ClassicEditorDialog", "guide.html#build-a-classic-command"},
                                 {"EnterValueDialog", "guide.html#enter-values"},
                                 {"EnterTextDialog", "guide.html#enter-values"},
                                 {"EnterTimecodeDialog", "guide.html#enter-values"},
                                 {"SelectInputDialog", "guide.html#build-a-classic-command"},
                                 {"LoadClipDialog", "guide.html#build-a-classic-command"},
                                 {"StepsDialog", "guide.html#undo-and-redo"},
                                 {"CompareWindow", "guide.html#compare-and-take-over"},
                                 {"WorkplacesWindow", "guide.html#set-workplaces-beside-each-other"},
                                 {"RehearseWindow", "guide.html#rehearse"},
                                 {"CheckWindow", "guide.html#check-macros"},
                                 {"CheckRulesDialog", "check.html"},
                                 {"SearchWindow", "guide.html#find-where-something-is-used"},
                                 {"ReplaceWindow", "guide.html#change-many-macros-at-once"},
                                 {"SheetWindow", "guide.html#put-macros-on-paper"},
                                 {"CaptureWindow", "guide.html#capture-values-with-a-preview"},
                                 {"SnapshotRestoreDialog", "guide.html#save-a-panel-in-one-file"},
                                 {"HistoryDialog", "guide.html#get-an-earlier-macro-back"},
                                 {"RecoveryDialog", "guide.html#after-a-crash-or-a-power-cut"},
                                 {"ActFinder", "guide.html#find-what-you-want-to-do"}};

constexpr const char* kBeginning = "guide.html";

QString kindOf(const QWidget& window) {
  return QString::fromLatin1(window.metaObject()->className()).section(QLatin1String("::"), -1);
}

// Null where nothing is told.
const char* placeOf(const QString& about) {
  const auto* const found = std::ranges::find_if(
      kTopics, [&](const HelpTopic& topic) { return about == QLatin1String(topic.about); });
  return found == std::end(kTopics) ? nullptr : found->place;
}

QString textOf(const QWidget& control) {
  return control.toolTip().isEmpty() ? control.accessibleName() : control.toolTip();
}

}  // namespace

std::span<const HelpTopic> helpTopics() { return kTopics; }

// The windows but the main one are told of as a whole: names of their controls may be those of others.
QString helpFor(const QWidget* control) {
  if (control == nullptr) return QLatin1String(kBeginning);
  if (const char* const place = placeOf(kindOf(*control->window()))) return QLatin1String(place);
  for (; !control->isWindow(); control = control->parentWidget())
    if (const char* const place = placeOf(control->objectName())) return QLatin1String(place);
  return QLatin1String(kBeginning);
}

HelpKeys::HelpKeys(QWidget& window) : QObject(&window), window_(window) { qApp->installEventFilter(this); }

// The menus of the main window answer there.
bool HelpKeys::eventFilter(QObject* watched, QEvent* event) {
  if (!watched->isWidgetType()) return false;
  auto& control = static_cast<QWidget&>(*watched);
  switch (event->type()) {
    case QEvent::KeyPress: {
      const auto& key = static_cast<const QKeyEvent&>(*event);
      if (key.key() != Qt::Key_F1 || control.window() == &window_) return false;
      if (key.modifiers() == Qt::ShiftModifier)
        QWhatsThis::enterWhatsThisMode();
      else
        openGuide(window_, helpFor(&control));
      return true;
    }
    case QEvent::QueryWhatsThis:
      if (!control.whatsThis().isEmpty() || textOf(control).isEmpty()) return false;
      event->accept();
      return true;
    case QEvent::WhatsThis:
      if (!control.whatsThis().isEmpty() || textOf(control).isEmpty()) return false;
      QWhatsThis::showText(static_cast<const QHelpEvent&>(*event).globalPos(), textOf(control), &control);
      event->accept();
      return true;
    default:
      return false;
  }
}

}  // namespace tessaly
