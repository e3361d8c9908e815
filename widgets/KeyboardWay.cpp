#include "widgets/KeyboardWay.h"

#include <algorithm>
#include <array>
#include <vector>

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QToolButton>
#include <QToolTip>

#include "widgets/SpokenComboBox.h"

namespace tessaly {

namespace {

constexpr const char* kKey = "keyboardWay";  // property of a control, in portable text
constexpr const char* kOwn = "tessaly::";

QString plain(QString caption) { return caption.remove(QLatin1Char('&')); }

template <class... Kinds>
bool isOneOf(const QWidget& widget) {
  return (... || (qobject_cast<const Kinds*>(&widget) != nullptr));
}

// Buttons of a pad are too many for keys of their own; Tab and the arrows lead to them.
bool takesKey(const QWidget& widget) {
  return !isOneOf<QToolButton, QScrollBar>(widget) &&
         isOneOf<QAbstractButton, QLineEdit, QComboBox, QAbstractItemView, QAbstractSpinBox, QAbstractSlider>(
             widget);
}

// What stands in another control, such as the field of a finder, is a part of that.
bool partOfControl(const QWidget& widget, const QDialog& dialog) {
  for (const QWidget* room = widget.parentWidget(); room != nullptr && room != &dialog;
       room = room->parentWidget())
    if (takesKey(*room)) return true;
  return widget.window() != &dialog;
}

struct Control {
  QWidget* widget;
  QLabel* label;  // null for none
  QString caption;
  int rank;  // who is given a key first
};

class DialogKeys {
 public:
  explicit DialogKeys(QDialog& dialog) : dialog_(dialog), labels_(dialog.findChildren<QLabel*>()) {
    collect();
    noteTaken();
  }

  void give() {
    std::stable_sort(controls_.begin(), controls_.end(),
                     [](const Control& a, const Control& b) { return a.rank < b.rank; });
    for (const Control& control : controls_)
      if (KeyboardWay::keyOf(*control.widget).isEmpty()) give(control);
    for (const Control& control : controls_)
      if (control.label != nullptr && control.label->toolTip().isEmpty())
        control.label->setToolTip(KeyboardWay::keyOf(*control.widget).toString(QKeySequence::NativeText));
  }

 private:
  void collect() {
    for (QWidget* widget : dialog_.findChildren<QWidget*>()) {
      if (!takesKey(*widget) || partOfControl(*widget, dialog_)) continue;
      const auto label = std::find_if(labels_.begin(), labels_.end(),
                                      [widget](const QLabel* it) { return it->buddy() == widget; });
      Control control{widget, label != labels_.end() ? *label : nullptr, {}, 1};
      if (const auto* button = qobject_cast<QAbstractButton*>(widget)) {
        control.caption = plain(button->text());
        control.rank = 0;
      } else if (control.label != nullptr) {
        control.caption = plain(control.label->text());
      }
      if (control.caption.isEmpty() || alike(control.caption)) {
        control.caption = widget->accessibleName();
        control.rank = 2;
      }
      controls_.push_back(control);
    }
  }

  [[nodiscard]] bool alike(const QString& caption) const {
    const auto buttons = dialog_.findChildren<QAbstractButton*>();
    return std::count_if(buttons.begin(), buttons.end(),
                         [&](const QAbstractButton* it) { return plain(it->text()) == caption; }) > 1;
  }

  // Keys in the captions stay where no other control has them already.
  void noteTaken() {
    for (const QShortcut* shortcut : dialog_.findChildren<QShortcut*>()) taken_ += shortcut->keys();
    for (const QAction* action : dialog_.findChildren<QAction*>()) taken_ += action->shortcuts();
    for (const QGroupBox* box : dialog_.findChildren<QGroupBox*>())
      taken_ += QKeySequence::mnemonic(box->title());
    for (const Control& control : controls_) {
      auto* button = qobject_cast<QAbstractButton*>(control.widget);
      const QKeySequence own = button != nullptr          ? button->shortcut()
                               : control.label != nullptr ? QKeySequence::mnemonic(control.label->text())
                                                          : QKeySequence();
      if (own.isEmpty()) continue;
      if (!taken_.contains(own)) {
        taken_ += own;
        KeyboardWay::note(*control.widget, own);
      } else if (button != nullptr) {
        button->setText(plain(button->text()));
      } else {
        control.label->setText(plain(control.label->text()));
      }
    }
  }

  // The first letters of the words before the others.
  [[nodiscard]] static QString lettersOf(const QString& caption) {
    QString first, others;
    for (qsizetype i = 0; i < caption.size(); ++i) {
      const QChar letter = caption[i].toUpper();
      if (!letter.isLetterOrNumber() || letter.unicode() >= 128) continue;
      (i == 0 || !caption[i - 1].isLetterOrNumber() ? first : others) += letter;
    }
    return first + others;
  }

  [[nodiscard]] QKeySequence freeKey(const QString& caption) const {
    const QString own = lettersOf(caption);
    const std::array<std::pair<Qt::KeyboardModifiers, QString>, 3> ways{
        {{Qt::AltModifier, own},
         {Qt::AltModifier | Qt::ShiftModifier, own},
         {Qt::AltModifier, QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ1234567890")}}};
    for (const auto& way : ways)
      for (const QChar letter : way.second) {
        // Shift makes another key of a digit.
        if (letter.isDigit() && way.first.testFlag(Qt::ShiftModifier)) continue;
        const QKeySequence key(QKeyCombination(way.first, static_cast<Qt::Key>(letter.unicode())));
        if (!taken_.contains(key)) return key;
      }
    return {};
  }

  void give(const Control& control) {
    const QKeySequence key = freeKey(control.caption);
    if (key.isEmpty()) return;
    taken_ += key;
    auto* shortcut = new QShortcut(key, &dialog_);
    shortcut->setAutoRepeat(false);
    QWidget* widget = control.widget;
    auto* button = qobject_cast<QAbstractButton*>(widget);
    if (button != nullptr) underline(*button, key);
    QObject::connect(shortcut, &QShortcut::activated, widget, [widget, button] {
      if (!widget->isVisible()) return;
      // Why it cannot be pressed is told by its tool tip.
      if (!widget->isEnabled())
        QToolTip::showText(widget->mapToGlobal(widget->rect().bottomLeft()), widget->toolTip(), widget);
      else if (button != nullptr)
        button->click();
      else
        widget->setFocus(Qt::ShortcutFocusReason);
    });
    KeyboardWay::note(*widget, key);
  }

  // To be seen only: the key stays when the caption is another one later.
  static void underline(QAbstractButton& button, const QKeySequence& key) {
    QString text = button.text();
    const QChar letter(static_cast<char16_t>(key[0].key()));
    const qsizetype place = text.indexOf(letter, 0, Qt::CaseInsensitive);
    if (place < 0 || text.contains(QLatin1Char('&'))) return;
    button.setText(text.insert(place, QLatin1Char('&')));
    button.setShortcut({});
  }

  QDialog& dialog_;
  QList<QLabel*> labels_;
  std::vector<Control> controls_;
  QList<QKeySequence> taken_;
};

bool ownWindow(const QWidget& widget) {
  return widget.isWindow() && QByteArrayView(widget.metaObject()->className()).startsWith(kOwn);
}

// A splitter puts each further part in front of the others; a screen reader is to find the left one first.
void orderSplitters(const QObject& window) {
  for (const QSplitter* splitter : window.findChildren<QSplitter*>()) {
    for (int part = 0; part < splitter->count(); ++part) splitter->widget(part)->raise();
    for (int part = 0; part < splitter->count(); ++part) splitter->handle(part)->raise();
  }
}

void nameKeyInTip(QWidget& control) {
  const QString name = KeyboardWay::keyOf(control).toString(QKeySequence::NativeText);
  const QString tip = control.toolTip();
  if (name.isEmpty() || tip == name || tip.endsWith(QLatin1Char('(') + name + QLatin1Char(')'))) return;
  control.setToolTip(tip.isEmpty() ? name
                                   : QCoreApplication::translate("KeyboardWay", "%1 (%2)").arg(tip, name));
}

bool pressesButton(QObject* watched, const QKeyEvent& key) {
  if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) return false;
  auto* push = qobject_cast<QPushButton*>(watched);
  auto* button = push != nullptr ? push : static_cast<QAbstractButton*>(qobject_cast<QToolButton*>(watched));
  if (button == nullptr || (push != nullptr && push->menu() != nullptr)) return false;
  if (!key.isAutoRepeat()) button->click();
  return true;
}

// A key that is held down repeats: the one that opened or closed a window is none for the dialog that has the
// keyboard then, nor for a shortcut of it.
bool heldInDialog(QObject* watched, QEvent* event) {
  const auto& key = *static_cast<const QKeyEvent*>(event);
  const bool ends = key.key() == Qt::Key_Escape || key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  if (!ends || !key.isAutoRepeat() || !watched->isWidgetType()) return false;
  if (qobject_cast<QDialog*>(static_cast<QWidget*>(watched)->window()) == nullptr) return false;
  event->accept();
  return true;
}

}  // namespace

void KeyboardWay::open() {
  static bool opened = false;
  if (std::exchange(opened, true)) return;
  speakComboBoxesByLabels();
  qApp->installEventFilter(new KeyboardWay(qApp));
}

void KeyboardWay::note(QWidget& control, const QKeySequence& key) {
  control.setProperty(kKey, key.toString(QKeySequence::PortableText));
  nameKeyInTip(control);
}

QKeySequence KeyboardWay::keyOf(const QWidget& control) {
  return QKeySequence(control.property(kKey).toString(), QKeySequence::PortableText);
}

bool KeyboardWay::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      return heldInDialog(watched, event);
    case QEvent::KeyPress:
      return heldInDialog(watched, event) || pressesButton(watched, *static_cast<QKeyEvent*>(event));
    case QEvent::Show:
      if (watched->isWidgetType() && ownWindow(*static_cast<QWidget*>(watched))) {
        orderSplitters(*watched);
        if (auto* dialog = qobject_cast<QDialog*>(watched)) DialogKeys(*dialog).give();
      }
      return false;
    case QEvent::ToolTipChange:
      nameKeyInTip(*static_cast<QWidget*>(watched));
      return false;
    default:
      return false;
  }
}

}  // namespace tessaly
