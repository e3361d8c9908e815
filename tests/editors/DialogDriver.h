#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTest>
#include <QTimer>

#include "widgets/Beep.h"

namespace tessaly {

// Counts the beeps of the dialogs that are given its sound.
struct BeepCount {
  int heard = 0;

  Beep sound() {
    return [this] { ++heard; };
  }
  int take() { return std::exchange(heard, 0); }
};

// Works a shown dialog as a person does. Throws when a control is missing or cannot be used.
class DialogDriver {
 public:
  explicit DialogDriver(QDialog& dialog) : dialog_(dialog) {
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    QApplication::processEvents();
  }

  template <class Widget>
  [[nodiscard]] Widget& control(const char* name) const {
    auto* widget = dialog_.findChild<Widget*>(QLatin1String(name));
    if (widget == nullptr) throw std::runtime_error(std::string("no control ") + name);
    return *widget;
  }

  [[nodiscard]] bool enabled(const char* name) const { return control<QWidget>(name).isEnabled(); }
  [[nodiscard]] bool visible(const char* name) const { return control<QWidget>(name).isVisible(); }
  [[nodiscard]] std::string label(const char* name) const {
    return control<QLabel>(name).text().toStdString();
  }
  [[nodiscard]] std::string field(const char* name) const {
    return control<QLineEdit>(name).text().toStdString();
  }

  // Replaces the field's text, a key at a time.
  void type(const char* name, const char* keys) const {
    QLineEdit& edit = usable<QLineEdit>(name);
    edit.setFocus();
    edit.selectAll();
    for (const QChar character : QString::fromUtf8(keys)) {
      QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(character));
      QApplication::sendEvent(&edit, &press);
    }
  }

  void paste(const char* name, const char* text) const {
    QLineEdit& edit = usable<QLineEdit>(name);
    edit.selectAll();
    edit.insert(QString::fromUtf8(text));
  }

  void erase(const char* name) const {
    QLineEdit& edit = usable<QLineEdit>(name);
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
  }

  // Near the left edge, where boxes and radio buttons have their mark.
  void click(const char* name) const {
    auto& button = usable<QAbstractButton>(name);
    QTest::mouseClick(&button, Qt::LeftButton, Qt::NoModifier, {10, button.height() / 2});
  }

  // As a screen reader's hands do.
  void toggle(const char* name) const {
    auto* hands = QAccessible::queryAccessibleInterface(&usable<QAbstractButton>(name))->actionInterface();
    hands->doAction(QAccessibleActionInterface::toggleAction());
  }

  [[nodiscard]] std::vector<std::string> rows(const char* name) const {
    const QAbstractItemModel& model = *control<QListView>(name).model();
    std::vector<std::string> texts;
    for (int row = 0; row < model.rowCount(); ++row)
      texts.push_back(model.index(row, 0).data().toString().toStdString());
    return texts;
  }

  [[nodiscard]] int selectedRow(const char* name) const {
    const QModelIndexList selected = control<QListView>(name).selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
  }

  // Clicks the first row that begins so.
  void choose(const char* name, const std::string& beginning) const {
    auto& list = usable<QListView>(name);
    const std::vector<std::string> texts = rows(name);
    for (std::size_t row = 0; row < texts.size(); ++row) {
      if (!texts[row].starts_with(beginning)) continue;
      const QModelIndex index = list.model()->index(static_cast<int>(row), 0);
      list.scrollTo(index);
      QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                        {10, list.visualRect(index).center().y()});
      return;
    }
    throw std::runtime_error("no row " + beginning + " in " + name);
  }

  // Runs `answer` in the modal dialog that is opened next. One that is left open is cancelled.
  static void answerNext(const std::function<void(QDialog&, const DialogDriver&)>& answer) {
    QTimer::singleShot(0, qApp, [answer] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return answerNext(answer);
      answer(*dialog, DialogDriver(*dialog));
      if (dialog->isVisible()) dialog->reject();
    });
  }

  // A key for whatever has the keyboard.
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
    QWidget* focus = dialog_.focusWidget();
    QTest::keyClick(focus != nullptr ? focus : &dialog_, key, modifiers);
  }

  [[nodiscard]] std::string focus() const {
    return dialog_.focusWidget() == nullptr ? "" : dialog_.focusWidget()->objectName().toStdString();
  }

 private:
  template <class Widget>
  Widget& usable(const char* name) const {
    Widget& widget = control<Widget>(name);
    if (!widget.isVisible() || !widget.isEnabled())
      throw std::runtime_error(std::string("cannot use ") + name);
    return widget;
  }

  QDialog& dialog_;
};

}  // namespace tessaly
