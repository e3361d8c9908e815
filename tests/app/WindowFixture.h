#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "app/MainWindow.h"
#include "app/PaneDescriptor.h"
#include "dictionary/InterfaceFile.h"
#include "tests/link/FakeTransport.h"
#include "tests/support/BuildPaths.h"
#include "tests/support/SampleSite.h"
#include "tests/support/TestSite.h"
#include "tests/support/WindowDriver.h"

namespace tessaly {

// The functions of the sample site, read once for all tests.
inline const FunctionDictionary& sampleDictionary() {
  static const FunctionDictionary& dictionary = []() -> const FunctionDictionary& {
    auto* read = new FunctionDictionary;
    loadFunctionDictionary(SiteRoot(sourcePath("site")), *read, [](const std::string&) {});
    return *read;
  }();
  return dictionary;
}

// A client without a panel, for tests of the harddisk.
inline PanelClient& offlineClient() {
  static auto* client = new PanelClient(std::make_unique<FakeTransport>());
  return *client;
}

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
        WindowContext{site.access(), sampleDictionary(), lists_, client, macros_, history, demo});
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

}  // namespace tessaly
