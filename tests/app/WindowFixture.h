#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include <QMenu>
#include <QMenuBar>
#include <QProgressDialog>

#include "app/MainWindow.h"
#include "app/PaneDescriptor.h"
#include "model/MacroFile.h"
#include "tests/link/FakeTransport.h"
#include "tests/support/LoadCommands.h"
#include "tests/support/SampleSite.h"
#include "tests/support/SmallDictionary.h"
#include "tests/support/TestSite.h"
#include "tests/support/WindowDriver.h"

namespace tessaly {

// A client without a panel, for tests of the harddisk.
inline PanelClient& offlineClient() {
  static auto* client = new PanelClient(std::make_unique<FakeTransport>());
  return *client;
}

// The folder of the sample site that most tests work in: "Evening News", "CP1", "Workplace 1".
inline constexpr const char* kMacroFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
inline std::string macroPath(int number) { return macroFile(kMacroFolder, number); }

// Two commands that a macro cannot give back, at the end of the sample site's first key file.
inline void spoilKey(const TestSite& site) {
  const char* file = "c:\\programme\\RV48\\appli\\Evening News\\CP7\\upk\\key00.upk";
  std::string parameters;
  for (int i = 0; i < 28; ++i) parameters += " 07";
  site.write(file, site.read(file) + "\ne3 10 05 01\n3f 00 1f 10 05 01" + parameters + " \n");
}

// A main window on a copy of the sample site. Message boxes are recorded.
class WindowFixture {
 public:
  explicit WindowFixture(PanelClient& client, std::uint16_t ftpPort = kFtpPort, bool demo = false)
      : history(site.root),
        lists_(site.root),
        macros_(client, site.root, ftpTransfers(ftpPort), &readsAsMacro, demo) {
    copySampleSite(site.root);
    context_ = std::make_unique<WindowContext>(
        WindowContext{site.access(), siteDictionary(), lists_, client, macros_, history, demo});
    macros_.keepIn(history);
    // What a fault keeps from being put back is not tried for as long as on a panel that may come back.
    macros_.waitFor(
        {std::chrono::milliseconds(500), std::chrono::milliseconds(500), std::chrono::milliseconds(20)});
    macros_.takeForMany(ftpTransfers(ftpPort, FtpClient::Connections::kKept));
    open();
  }
  // Its threads read what stands here.
  ~WindowFixture() {
    driver.reset();
    window.reset();
  }

  // Opens the window anew, as another start of the program would.
  void open() {
    window.reset();
    window = std::make_unique<MainWindow>(*context_);
    window->show();
    QCoreApplication::postEvent(window.get(),
                                new QEvent(static_cast<QEvent::Type>(kDictionaryLoadedMessage)));
    driver = std::make_unique<WindowDriver>(*window);
    driver->waitUntilLoaded();
  }

  // For windows that are opened from then on.
  void setPreferences(Preferences& preferences) { context_->preferences = &preferences; }

  [[nodiscard]] static const PaneDescriptor::ControlIds& ids(Pane pane) {
    return kPaneDescriptors[index(pane)].ids;
  }

  [[nodiscard]] QString status() const {
    return window->findChild<QLabel*>(QStringLiteral("statusStrip"))->text();
  }

  TestSite site;
  MacroHistory history;
  std::unique_ptr<MainWindow> window;
  std::unique_ptr<WindowDriver> driver;

 private:
  DecodingLists lists_;
  PanelMacros macros_;
  std::unique_ptr<WindowContext> context_;
};

// A window worked as a person works it.
class WindowTest : public testing::Test {
 protected:
  explicit WindowTest(PanelClient& client = offlineClient(), std::uint16_t port = kFtpPort, bool demo = false)
      : fixture_(client, port, demo) {
    QApplication::setActiveWindow(fixture_.window.get());
  }

  [[nodiscard]] static const PaneDescriptor::ControlIds& ids(Pane pane) { return WindowFixture::ids(pane); }
  [[nodiscard]] WindowDriver& driver() { return *fixture_.driver; }
  [[nodiscard]] std::string told() const { return fixture_.status().toStdString(); }
  std::vector<std::string> asked() { return fixture_.site.messages.take(); }
  [[nodiscard]] std::string read(std::string_view path) const { return fixture_.site.read(path); }
  // What the pane holds.
  [[nodiscard]] std::string held(Pane pane) const { return read(workingCopyPath(pane)); }
  [[nodiscard]] MacroCommands commandsOf(const std::string& path) {
    MacroCommands commands;
    EXPECT_TRUE(loadCommands(fixture_.site.access(), path, commands)) << path;
    return commands;
  }
  [[nodiscard]] bool enabled(int id) { return driver().control<QWidget>(id).isEnabled(); }
  [[nodiscard]] bool visible(int id) { return driver().control<QWidget>(id).isVisible(); }
  [[nodiscard]] bool edited(Pane pane) { return visible(ids(pane).saveChanges); }
  [[nodiscard]] std::string selected(int listId) {
    const ListRow* row = driver().list(listId).selected();
    return row != nullptr ? row->text : "";
  }
  [[nodiscard]] QAction& action(const char* name) {
    return *fixture_.window->menuBar()->findChild<QAction*>(QLatin1String(name));
  }

  void open(const PaneDescriptor::ControlIds& pane, const char* number = "001") {
    driver().choose(pane.applications, "Evening News");
    driver().choose(pane.macros, number);
  }
  void removeFirst(const PaneDescriptor::ControlIds& pane) {
    driver().clickRow(pane.commands, 0);
    driver().press(pane.deleteCommand);
  }
  void create(int button, int number, const char* name = "Fresh") {
    driver().press(button, filledIn({{"position", QString::number(number)}, {"name", name}}));
  }
  void copyTo(int button, int number) {
    driver().press(button, filledIn({{"position", QString::number(number)}}));
  }
  void rename(int button, const char* name) { driver().press(button, filledIn({{"newName", name}})); }
  // A key for the window, whichever was in front.
  void shortcut(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QApplication::setActiveWindow(fixture_.window.get());
    QTest::keyClick(fixture_.window.get(), key, modifiers);
  }
  // Goes to an entry of the menu that has popped up, and takes it.
  static void takeFromMenu(Qt::Key way) {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QTest::keyClick(menu, way);
    QTest::keyClick(menu, Qt::Key_Return);
  }
  // In the toolkit's own dialog, where a name that is typed opens a list that takes the Enter.
  static void nameFile(QDialog& dialog, const std::string& path) {
    auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    edit->setText(QString::fromStdString(path));
    QTest::keyClick(edit, Qt::Key_Return);
  }
  static std::function<void(QDialog&)> filledIn(WindowDriver::Fields fields) {
    return WindowDriver::filledIn(std::move(fields));
  }
  // While `act` waits, each time: what is waited for is noted, and `then` done.
  std::string waitedFor(const std::function<void()>& act, const std::function<void(QProgressDialog&)>& then) {
    std::string told;
    QTimer looking;
    QObject::connect(&looking, &QTimer::timeout, [&] {
      auto* progress = fixture_.window->findChild<QProgressDialog*>();
      if (progress == nullptr || !progress->isVisible()) return;
      told = progress->labelText().toStdString();
      then(*progress);
    });
    looking.start(5);
    act();
    return told;
  }
  // Once it is offered.
  static void cancel(QProgressDialog& progress) {
    if (progress.findChild<QAbstractButton*>() != nullptr) WindowDriver::click(progress, "Cancel");
  }
  // Another start of the program, which may make an offer; `answer` is run in it.
  void startAgain(const std::function<void(QDialog&)>& answer = {}) {
    bool offered = !answer;
    if (answer)
      WindowDriver::answerNext([&](QDialog& dialog) {
        offered = true;
        answer(dialog);
      });
    fixture_.open();
    WindowDriver::waitFor([&] { return offered && QApplication::activeModalWidget() == nullptr; },
                          "the offer");
    QApplication::setActiveWindow(fixture_.window.get());
  }

  WindowFixture fixture_;
  const PaneDescriptor::ControlIds& a_ = ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = ids(Pane::kB);
};

}  // namespace tessaly
