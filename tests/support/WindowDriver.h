#pragma once

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include "app/MainWindow.h"
#include "widgets/ListBox.h"

namespace tessaly {

// Works the main window as a person does: finds controls by their numbers, clicks, types, answers dialogs.
// Throws when something that a person would look for is not there.
class WindowDriver {
 public:
  explicit WindowDriver(MainWindow& window) : window_(window) {}

  // Looked for once, so that whoever measures asks at no cost.
  template <class Widget>
  [[nodiscard]] Widget& control(int id) const {
    QPointer<QWidget>& known = controls_[id];
    if (known == nullptr)
      for (auto* widget : window_.findChildren<QWidget*>())
        if (widget->property("controlId").toInt() == id) known = widget;
    if (auto* widget = qobject_cast<Widget*>(known.data())) return *widget;
    throw std::runtime_error("no control " + std::to_string(id));
  }

  [[nodiscard]] RowsView& list(int id) const { return control<RowsView>(id); }

  static void waitFor(const std::function<bool()>& condition, const char* what) {
    constexpr qint64 kLongest = 30000, kLongestTurn = 100;  // milliseconds
    QElapsedTimer timer;
    timer.start();
    // A machine that stood still has not waited: no turn counts for more than it may take.
    for (qint64 waited = 0; !condition(); waited += std::min(timer.restart(), kLongestTurn)) {
      if (waited > kLongest) throw std::runtime_error(std::string("waited in vain for ") + what);
      QApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
      QTest::qWait(1);
    }
  }

  // Who has the keyboard. Word of a closed window comes late and may take the keyboard from the one in front,
  // which a desktop would give it back.
  [[nodiscard]] static QWidget* keyboard() {
    static QPointer<QWidget> front;
    waitFor(
        [] {
          if (QWidget* active = QApplication::activeWindow())
            front = active;
          else if (front != nullptr)
            QApplication::setActiveWindow(front);
          return QApplication::focusWidget() != nullptr;
        },
        "the keyboard");
    return QApplication::focusWidget();
  }

  // As a click does on a desktop. Here word of a closed window may come late, and take the keyboard away.
  void bringToFront() const {
    if (QApplication::activeModalWidget() == nullptr) QApplication::setActiveWindow(&window_);
  }

  // Without a question. What still runs is given up first, or waited for.
  void close() const {
    window_.close();
    waitFor([this] { return !window_.isVisible(); }, "the window to close");
  }

  void waitUntilLoaded() const {
    waitFor([this] { return window_.loaded(); }, "the function dictionary");
  }

  // Presses a button of the window; `answer` is run in the dialog that it opens, if any.
  void press(int id, const std::function<void(QDialog&)>& answer = {}) const {
    auto& button = control<QAbstractButton>(id);
    if (!button.isVisible() || !button.isEnabled())
      throw std::runtime_error("cannot press " + button.text().toStdString());
    if (answer) answerNext(answer);
    bringToFront();
    QTest::mouseClick(&button, Qt::LeftButton);
    if (!problem_.empty()) throw std::runtime_error("in a dialog: " + std::exchange(problem_, {}));
  }

  // Runs `answer` in the next modal dialog. The dialog is closed afterwards if the answer left it open.
  static void answerNext(const std::function<void(QDialog&)>& answer) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, answer] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isVisible()) return;
      timer->stop();
      timer->deleteLater();
      QApplication::setActiveWindow(dialog);
      QApplication::processEvents();
      // An exception must not cross the event loop: it is kept for the press that opened the dialog.
      try {
        answer(*dialog);
      } catch (const std::exception& problem) {
        problem_ = problem.what();
        dialog->reject();
      }
    });
    timer->start(5);
  }

  static void type(QDialog& dialog, const char* field, const QString& text) {
    auto* edit = dialog.findChild<QLineEdit*>(QLatin1String(field));
    if (edit == nullptr) throw std::runtime_error(std::string("no field ") + field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
  }

  // Types into the dialog's fields and presses "OK".
  using Fields = std::vector<std::pair<const char*, QString>>;
  static std::function<void(QDialog&)> filledIn(Fields fields) {
    return [fields = std::move(fields)](QDialog& dialog) {
      for (const auto& [field, text] : fields) type(dialog, field, text);
      click(dialog, QStringLiteral("OK"));
    };
  }

  static void click(QDialog& dialog, const QString& text) {
    for (auto* button : dialog.findChildren<QAbstractButton*>()) {
      QString caption = button->text();
      if (caption.remove(QLatin1Char('&')) != text) continue;
      QTest::mouseClick(button, Qt::LeftButton);
      return;
    }
    throw std::runtime_error("no button " + text.toStdString());
  }

  // Clicks the first row that begins so.
  void choose(int listId, const std::string& beginning) const {
    RowsView& box = list(listId);
    for (int row = 0; row < box.rows().rowCount(); ++row) {
      if (box.rows().row(row)->text.rfind(beginning, 0) != 0) continue;
      clickRow(listId, row);
      return;
    }
    throw std::runtime_error("no row " + beginning);
  }

  void clickRow(int listId, int row) const {
    RowsView& box = list(listId);
    const QModelIndex index = box.rows().index(row);
    box.scrollTo(index);
    const QRect place = box.visualRect(index);
    bringToFront();
    QTest::mouseClick(box.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(10, place.center().y()));
  }

  [[nodiscard]] std::vector<std::string> texts(int listId) const {
    std::vector<std::string> result;
    const ListRows& rows = list(listId).rows();
    for (int row = 0; row < rows.rowCount(); ++row) result.push_back(rows.row(row)->text);
    return result;
  }

 private:
  inline static std::string problem_;  // of the last dialog that was answered

  MainWindow& window_;
  mutable std::map<int, QPointer<QWidget>> controls_;  // by their numbers
};

}  // namespace tessaly
