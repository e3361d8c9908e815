// Works the program's window act by act, and stands still before the last one, so that whoever has started
// this may let calls of the system fail in it.
//
// Once the acts before it are done, "ready" is written and a line is read: "go" begins the act, and whatever
// else ends the process. What the window then says is told, line by line, with an empty one behind it, and
// another line is read.

#include <cstdio>
#include <iostream>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>

#include <QImage>
#include <QLabel>
#include <QLinearGradient>
#include <QMenu>
#include <QPainter>

#include "app/Application.h"
#include "fuzz/soak/DialogAnswers.h"
#include "tests/support/WindowDriver.h"
#include "widgets/QuietToolkit.h"

namespace tessaly {
namespace {

constexpr const char* kUsage =
    "usage: tessaly-window-acts ROOT ACT...\n"
    "ACT is edit, save, saveAs=NUMBER, create=NUMBER, copy=NUMBER, rename=NAME, delete, undo, or close\n";

class Hand {
 public:
  Hand(Application& application) : window_(*application.window()), driver_(window_) {
    dialogs_.boxButtons = {QStringLiteral("OK"), QStringLiteral("Yes"), QStringLiteral("Close")};
    driver_.waitUntilLoaded();
    for (const auto* ids : {&b_, &a_}) driver_.choose(ids->applications, "Show");
    driver_.clickRow(b_.workplaces, 1);
    for (const auto* ids : {&b_, &a_}) driver_.clickRow(ids->macros, 0);
  }

  void act(const std::string& act) {
    const std::size_t sign = act.find('=');
    const QString value = sign == act.npos ? QString() : QString::fromStdString(act.substr(sign + 1));
    const std::string what = act.substr(0, sign);
    if (what == "edit") {
      driver_.clickRow(a_.commands, 0);
      driver_.press(a_.deleteCommand);
    } else if (what == "save") {
      save();
    } else if (what == "create") {
      press(a_.createMacro, {{"position", value}, {"name", QStringLiteral("New")}});
    } else if (what == "copy") {
      press(a_.copyMacro, {{"position", value}});
    } else if (what == "rename") {
      driver_.clickRow(a_.macros, 0);
      press(a_.renameMacro, {{"newName", value}});
    } else if (what == "delete") {
      driver_.clickRow(a_.macros, 0);
      press(a_.deleteMacro, {});
    } else if (what == "undo") {
      choose("undoMacro");
    } else if (what == "saveAs") {
      saveAs(value);
    } else if (what == "close") {
      window_.close();
    } else {
      throw std::runtime_error("no act " + act);
    }
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
  // What could not be saved is owed, and has a button in the strip.
  void save() const {
    const auto& button = driver_.control<QAbstractButton>(a_.saveChanges);
    if (button.isVisible() && button.isEnabled()) return driver_.press(a_.saveChanges);
    for (auto* const owed : window_.findChildren<QPushButton*>())
      if (owed->isVisible() && owed->text() == QStringLiteral("Save Again")) return owed->click();
    throw std::runtime_error("nothing to be saved");
  }
  void choose(const char* name) const {
    auto* const action = window_.findChild<QAction*>(QLatin1String(name));
    if (action == nullptr || !action->isEnabled())
      throw std::runtime_error(std::string("cannot choose ") + name);
    action->trigger();
  }
  void saveAs(const QString& number) {
    answerWith({{"position", number}});
    choose("saveAs");
    auto* const places = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (places == nullptr) throw std::runtime_error("no places to save in");
    QAction* const inPane = places->actions().constFirst();
    places->close();
    inPane->trigger();
  }

  MainWindow& window_;
  WindowDriver driver_;
  DialogAnswers dialogs_;
  const PaneDescriptor::ControlIds& a_ = kPaneDescriptors[0].ids;
  const PaneDescriptor::ControlIds& b_ = kPaneDescriptors[1].ids;
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

int work(Application& application, int count, char** acts) {
  Hand hand(application);
  for (int i = 0; i + 1 < count; ++i) hand.act(acts[i]);
  hand.told();
  ::prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY);
  startPainters();
  std::puts("ready");
  std::fflush(stdout);
  for (std::string line; std::getline(std::cin, line) && line == "go";) {
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
  if (count < 3) {
    std::fputs(tessaly::kUsage, stderr);
    return 2;
  }
  tessaly::quietToolkit();
  QApplication toolkit(count, words);
  tessaly::Application application({words[1], false, false, 21, {}});
  if (application.claimRoot() != tessaly::RootClaim::kOurs) {
    std::fputs("another program runs on this root\n", stderr);
    return 1;
  }
  application.start();
  try {
    return tessaly::work(application, count - 2, words + 2);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return 1;
  }
}
