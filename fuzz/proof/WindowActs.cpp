// Works the program's window act by act, and stands still before the last one, so that whoever has started
// this may let calls of the system fail in it, or look at what comes of it.
//
// Once the acts before it are done, "ready" is written and a line is read: "go" begins the act, and whatever
// else ends the process. What the window then says is told, line by line, with an empty one behind it, and
// another line is read.

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <sys/prctl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <QImage>
#include <QLabel>
#include <QLinearGradient>
#include <QMenu>
#include <QPainter>

#include "app/Application.h"
#include "fuzz/soak/DialogAnswers.h"
#include "tests/editors/DialogDriver.h"
#include "tests/support/WindowDriver.h"
#include "widgets/QuietToolkit.h"

namespace tessaly {
namespace {

constexpr const char* kUsage =
    "usage: tessaly-window-acts [--ftp-port P] ROOT ACT...\n"
    "ACT is open=NUMBER, row=NUMBER, edit, new=VALUE, newAtStart=VALUE, newAtRow=VALUE, modify=VALUE,\n"
    "choose=ENTRY, save, saveAs=NUMBER, create=NUMBER, copy=NUMBER, rename=NAME, delete, replace=RULE, undo\n"
    "or close, in pane A or in that of the last pane=LETTER;\n"
    "or controlPanel=NAME or panel=ADDRESS, in pane B\n";

class Hand {
 public:
  explicit Hand(Application& application) : window_(*application.window()), driver_(window_) {
    dialogs_.boxButtons = {QStringLiteral("OK"), QStringLiteral("Yes"), QStringLiteral("Close")};
    driver_.waitUntilLoaded();
    for (const auto* ids : {&b_, &a_}) driver_.choose(ids->applications, "Show");
    driver_.clickRow(b_.workplaces, 1);
    for (const auto* ids : {&b_, &a_}) driver_.clickRow(ids->macros, 0);
  }

  void act(const std::string& act) {
    const std::size_t sign = act.find('=');
    const QString value = sign == act.npos ? QString() : QString::fromStdString(act.substr(sign + 1));
    const auto known = acts_.find(act.substr(0, sign));
    if (known == acts_.end()) throw std::runtime_error("no act " + act);
    known->second(value);
    if (const std::string problem = dialogs_.takeProblem(); !problem.empty())
      throw std::runtime_error(problem);
  }

  // Boxes, what could not be said in one, and the strip.
  std::string told() {
    std::string text;
    for (const std::string& box : dialogs_.takeTexts()) text += box + '\n';
    const auto* const strip = window_.findChild<QLabel*>(QStringLiteral("statusStrip"));
    text += strip->text().toStdString() + '\n';
    for (std::size_t at = text.find("\n\n"); at != text.npos; at = text.find("\n\n")) text.erase(at, 1);
    return text;
  }

 private:
  using Fields = std::vector<std::pair<const char*, QString>>;
  void answerWith(const Fields& fields) {
    dialogs_.answer = [fields](QDialog& dialog) {
      for (const auto& [field, text] : fields) WindowDriver::type(dialog, field, text);
      WindowDriver::click(dialog, QStringLiteral("OK"));
    };
  }
  void press(int button, const Fields& fields) {
    answerWith(fields);
    driver_.press(button);
  }
  void insert(const QString& value, const char* place) {
    dialogs_.answer = [value, place](QDialog& dialog) {
      makeClipCommand(dialog, value.toUtf8().constData(), place);
    };
    driver_.press(at_->newCorvane);
  }
  void modify(const QString& value) {
    dialogs_.answer = [value](QDialog& dialog) {
      const DialogDriver user(dialog);
      user.type("value", value.toUtf8().constData());
      user.click("modify");
    };
    driver_.press(at_->modifyCommand);
  }
  // What could not be saved is owed, and has a button in the strip.
  void save() const {
    const auto& button = driver_.control<QAbstractButton>(at_->saveChanges);
    if (button.isVisible() && button.isEnabled()) return driver_.press(at_->saveChanges);
    for (auto* const owed : window_.findChildren<QPushButton*>())
      if (owed->isVisible() && owed->text() == QStringLiteral("Save Again")) return owed->click();
    throw std::runtime_error("nothing to be saved");
  }
  void choose(const QString& name) const {
    auto* const action = window_.findChild<QAction*>(name);
    if (action == nullptr || !action->isEnabled())
      throw std::runtime_error("cannot choose " + name.toStdString());
    action->trigger();
  }
  void saveAs(const QString& number) {
    answerWith({{"position", number}});
    choose(QStringLiteral("saveAs"));
    auto* const places = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (places == nullptr) throw std::runtime_error("no places to save in");
    QAction* const inPane = places->actions().constFirst();
    places->close();
    inPane->trigger();
  }
  // In the folder of pane A.
  void replace(const QString& rule) const {
    choose(QStringLiteral("replace"));
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
      auto* const window = qobject_cast<QDialog*>(widget);
      if (window == nullptr || window->objectName() != QStringLiteral("ReplaceWindow")) continue;
      const DialogDriver user(*window);
      user.type("rule", rule.toUtf8().constData());
      user.click("preview");
      WindowDriver::waitFor([&] { return user.enabled("replace"); }, "what would be replaced");
      user.click("replace");
      WindowDriver::waitFor([&] { return user.label("outcome").starts_with("Replaced in"); },
                            "the end of it");
      return;
    }
    throw std::runtime_error("no window to replace in");
  }
  void connectPanel(const QString& address) {
    driver_.press(b_.panel);
    auto& field = driver_.control<QLineEdit>(b_.address);
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, address);
    driver_.press(b_.connectButton);
    chooseOnceListed(b_.workplaces, "Workplace 1");
  }
  void chooseOnceListed(int list, const std::string& beginning) {
    const auto listed = [&] {
      const std::vector<std::string> rows = driver_.texts(list);
      return std::any_of(rows.begin(), rows.end(),
                         [&](const std::string& row) { return row.starts_with(beginning); });
    };
    WindowDriver::waitFor(listed, "what the panel lists");
    driver_.choose(list, beginning);
  }

  MainWindow& window_;
  WindowDriver driver_;
  DialogAnswers dialogs_;
  const PaneDescriptor::ControlIds& a_ = kPaneDescriptors[0].ids;
  const PaneDescriptor::ControlIds& b_ = kPaneDescriptors[1].ids;
  const PaneDescriptor::ControlIds* at_ = &a_;  // the pane that the acts are done in
  const std::map<std::string, std::function<void(const QString& value)>> acts_ = {
      {"row", [this](const QString& row) { driver_.clickRow(at_->commands, row.toInt()); }},
      {"edit",
       [this](const QString&) {
         driver_.clickRow(at_->commands, 0);
         driver_.press(at_->deleteCommand);
       }},
      {"new", [this](const QString& value) { insert(value, "insertEnd"); }},
      {"newAtStart", [this](const QString& value) { insert(value, "insertStart"); }},
      {"newAtRow", [this](const QString& value) { insert(value, "insertSelected"); }},
      {"modify", [this](const QString& value) { modify(value); }},
      {"choose", [this](const QString& entry) { choose(entry); }},
      {"save", [this](const QString&) { save(); }},
      {"saveAs", [this](const QString& number) { saveAs(number); }},
      {"create",
       [this](const QString& number) {
         press(at_->createMacro, {{"position", number}, {"name", QStringLiteral("New")}});
       }},
      {"copy",
       [this](const QString& number) {
         press(at_->copyMacro, {{"position", number}});
       }},
      {"rename",
       [this](const QString& name) {
         driver_.clickRow(at_->macros, 0);
         press(at_->renameMacro, {{"newName", name}});
       }},
      {"delete",
       [this](const QString&) {
         driver_.clickRow(at_->macros, 0);
         press(at_->deleteMacro, {});
       }},
      {"replace", [this](const QString& rule) { replace(rule); }},
      {"undo", [this](const QString&) { choose(QStringLiteral("undoMacro")); }},
      {"close", [this](const QString&) { window_.close(); }},
      {"controlPanel",
       [this](const QString& name) {
         driver_.choose(b_.controlPanels, name.toStdString());
         driver_.clickRow(b_.macros, 0);
       }},
      {"panel", [this](const QString& address) { connectPanel(address); }},
      {"open", [this](const QString& number) { chooseOnceListed(at_->macros, number.toStdString()); }},
      {"pane", [this](const QString& letter) { at_ = letter == QLatin1String("B") ? &b_ : &a_; }},
  };
};

// The toolkit paints what is large on threads of its own, and waits for ever for those that are not to be
// had.
void startPainters() {
  constexpr int kLarge = 1000;  // pixels
  QImage canvas(kLarge, kLarge, QImage::Format_ARGB32_Premultiplied);
  QLinearGradient shades(0, 0, kLarge, kLarge);
  shades.setColorAt(1, Qt::white);
  QPainter(&canvas).fillRect(canvas.rect(), shades);
}

// Not by a call that may be made to fail.
std::string nextLine() {
  std::string line;
  char byte = 0;
  const iovec piece{&byte, 1};
  while (::readv(STDIN_FILENO, &piece, 1) == 1 && byte != '\n') line += byte;
  return line;
}

int work(Application& application, int count, char** acts) {
  Hand hand(application);
  for (int i = 0; i + 1 < count; ++i) hand.act(acts[i]);
  hand.told();
  ::prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY);
  startPainters();
  std::puts("ready");
  std::fflush(stdout);
  while (nextLine() == "go") {
    try {
      hand.act(acts[count - 1]);
      std::printf("%s\n", hand.told().c_str());
    } catch (const std::exception& problem) {
      std::printf("cannot: %s\n%s\n", problem.what(), hand.told().c_str());
    }
    std::fflush(stdout);
  }
  ::_exit(0);  // nothing more is done to the files
}

}  // namespace
}  // namespace tessaly

int main(int count, char** words) {
  const bool named = count > 2 && std::string(words[1]) == "--ftp-port";
  const int first = named ? 3 : 1;
  if (count < first + 2) {
    std::fputs(tessaly::kUsage, stderr);
    return 2;
  }
  tessaly::quietToolkit();
  const auto port = named ? static_cast<std::uint16_t>(std::stoi(words[2])) : tessaly::kFtpPort;
  const std::string root = words[first];
  int none = 1;
  QApplication toolkit(none, words);
  tessaly::Application application({root, false, false, port, {}});
  if (application.claimRoot() != tessaly::RootClaim::kOurs) {
    std::fputs("another program runs on this root\n", stderr);
    return 1;
  }
  application.start();
  try {
    return tessaly::work(application, count - first - 1, words + first + 1);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return 1;
  }
}
