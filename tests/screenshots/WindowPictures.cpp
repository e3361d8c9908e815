#include "tests/screenshots/WindowPictures.h"

#include <filesystem>
#include <stdexcept>

#include "app/PaneDescriptor.h"
#include "model/MacroFile.h"
#include "model/MacroHistory.h"
#include "model/Settings.h"
#include "model/SiteBrowser.h"
#include "panelsim/PanelSimulator.h"
#include "tests/support/TestSite.h"

namespace tessaly {

namespace {

constexpr const char* kPanelAddress = "127.10.12.41";  // of this machine, and looks like a panel's

const PaneDescriptor::ControlIds& ids(Pane pane) { return kPaneDescriptors[index(pane)].ids; }

class WindowPictures {
 public:
  WindowPictures(const SiteRoot& root, const FunctionDictionary& dictionary, DecodingLists& lists, QSize size,
                 const SavePicture& save)
      : size_(size),
        save_(save),
        panel_(panelOptions(site_.root), [](const std::string&) {}),
        history_(site_.root) {
    std::filesystem::copy(root.path() / "c", site_.root.path() / "c",
                          std::filesystem::copy_options::recursive);
    // Both panes name the panel: each moves its files to and from its own address.
    Settings settings;
    static_cast<void>(readSettings(site_.root, settings));
    settings.addressA = settings.addressB = kPanelAddress;
    if (!writeSettings(site_.root, settings)) throw std::runtime_error("no settings");
    std::string reason;
    if (!panel_.start(reason)) throw std::runtime_error("no panel: " + reason);
    macros_ =
        std::make_unique<PanelMacros>(client_, site_.root, ftpTransfers(panel_.ftpPort()), &readsAsMacro);
    macros_->keepIn(history_);
    context_ = std::make_unique<WindowContext>(
        WindowContext{site_.access(), dictionary, lists, client_, *macros_, history_});
  }

  void take(bool all) {
    open();
    takeKeyFiles();
    takeConnected();
    takeUpdated();
    if (all) takeFaulty();
    takeHistory();
    takeUnsavedChanges();
    window_.reset();
    client_.disconnect();
  }

 private:
  static PanelOptions panelOptions(const SiteRoot& root) {
    PanelOptions options;
    options.address = kPanelAddress;
    options.ftpPort = 0;
    options.root = (root.path() / "panel").string();
    options.site = root.path().string();
    options.seed = true;
    return options;
  }

  void open() {
    window_.reset();
    window_ = std::make_unique<MainWindow>(*context_);
    window_->show();
    window_->resize(size_);
    QCoreApplication::postEvent(window_.get(),
                                new QEvent(static_cast<QEvent::Type>(kDictionaryLoadedMessage)));
    user_ = std::make_unique<WindowDriver>(*window_);
    user_->waitUntilLoaded();
  }

  void awaitRow(int listId, const std::string& beginning) const {
    WindowDriver::waitFor(
        [&] {
          for (const std::string& text : user_->texts(listId))
            if (text.starts_with(beginning)) return true;
          return false;
        },
        beginning.c_str());
  }

  void chooseOnDisk(Pane pane, const std::string& panel, const std::string& macro) const {
    user_->choose(ids(pane).applications, "Evening News");
    user_->choose(ids(pane).controlPanels, panel);
    user_->choose(ids(pane).macros, macro);
  }

  void chooseOnPanel(Pane pane, const std::string& macro) const {
    awaitRow(ids(pane).workplaces, "Workplace 1");
    user_->choose(ids(pane).workplaces, "Workplace 1");
    awaitRow(ids(pane).macros, macro);
    user_->choose(ids(pane).macros, macro);
  }

  void takeKeyFiles() const {
    chooseOnDisk(Pane::kA, "CP7", "03");
    chooseOnDisk(Pane::kB, "CP1", "003");
    save_(*window_, "key-files.png");
  }

  void takeConnected() const {
    chooseOnDisk(Pane::kA, "CP1", "010");
    user_->press(ids(Pane::kB).panel);
    user_->press(ids(Pane::kB).connectButton);
    chooseOnPanel(Pane::kB, "007");
    save_(*window_, "connected.png");
  }

  void takeUpdated() const {
    user_->press(ids(Pane::kA).panel);
    chooseOnPanel(Pane::kA, "010");
    user_->press(ids(Pane::kA).updateData);
    const auto& saveButton = user_->control<QWidget>(ids(Pane::kA).saveChanges);
    WindowDriver::waitFor([&] { return saveButton.isVisible(); }, "the panel's values");
    save_(*window_, "updated.png");
    user_->press(ids(Pane::kA).saveChanges);
  }

  // A macro with a value beyond its limits, a command twice and a function that there is not.
  void takeFaulty() const {
    const auto clip = [](const char* key, const char* value) {
      return std::string("<cmd fid=\"QMF1.ME1.") + key +
             ".CLIP.SET\" workplace=\"1\"><param name=\"VALUE\" value=\"" + value + "\"/></cmd>";
    };
    site_.write(macroFile("c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\", 90),
                "<macro name=\"Not yet right\"><data>" + clip("KEY1", "0.25") + clip("KEY2", "7") +
                    clip("KEY3", "0.5") + clip("KEY3", "0.5") +
                    "<cmd fid=\"QMF1.NOWHERE.TO.GO\" workplace=\"1\"/></data></macro>");
    user_->press(ids(Pane::kA).harddisk);
    chooseOnDisk(Pane::kA, "CP1", "090");
    chooseOnPanel(Pane::kB, "010");
    takeReviews(*window_, *user_, *context_, save_);
  }

  void takeHistory() const {
    user_->press(ids(Pane::kA).harddisk);
    chooseOnDisk(Pane::kA, "CP1", "001");
    user_->clickRow(ids(Pane::kA).commands, 0);
    user_->press(ids(Pane::kA).deleteCommand);
    user_->press(ids(Pane::kA).saveChanges);
    user_->choose(ids(Pane::kA).macros, "021");
    user_->press(ids(Pane::kA).deleteMacro);
    WindowDriver::answerNext([this](QDialog& dialog) {
      save_(dialog, "history.png");
      dialog.reject();
    });
    window_->findChild<QAction*>(QStringLiteral("history"))->trigger();
  }

  // The window is dropped with unsaved changes, as by a crash, and the next one makes its offer.
  void takeUnsavedChanges() {
    chooseOnDisk(Pane::kA, "CP1", "001");
    user_->clickRow(ids(Pane::kA).commands, 0);
    user_->press(ids(Pane::kA).deleteCommand);
    bool taken = false;
    WindowDriver::answerNext([&](QDialog& dialog) {
      save_(dialog, "unsaved-changes.png");
      dialog.reject();
      taken = true;
    });
    open();
    WindowDriver::waitFor([&] { return taken; }, "the offer of the unsaved changes");
  }

  TestSite site_;
  QSize size_;  // of the window
  const SavePicture& save_;
  PanelSimulator panel_;
  PanelClient client_;
  MacroHistory history_;
  std::unique_ptr<PanelMacros> macros_;
  std::unique_ptr<WindowContext> context_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<WindowDriver> user_;
};

}  // namespace

void takeWindows(const SiteRoot& root, const FunctionDictionary& dictionary, DecodingLists& lists, QSize size,
                 const SavePicture& save, bool all) {
  WindowPictures(root, dictionary, lists, size, save).take(all);
}

}  // namespace tessaly
