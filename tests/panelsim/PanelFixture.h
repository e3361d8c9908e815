#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "panelsim/PanelSimulator.h"
#include "platform/FtpClient.h"
#include "tests/support/TestSite.h"
#include "tests/xctl/ScriptedPeer.h"

namespace tessaly {

// A simulated panel on free ports over a tree of its own.
class PanelTest : public testing::Test {
 protected:
  static std::string folder(int workplace) {
    return "/flash/data/PANEL/macro/workplace" + std::to_string(workplace) + "/";
  }
  static std::string macro(const std::string& name) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<macro name=\"" + name + "\"><data/></macro>\n";
  }
  static std::string nameOf(int workplace, int number) {
    return "PANEL.MACRO" + std::to_string(workplace) + ".REG" + std::to_string(number) + ".NAME";
  }

  static ParameterList registerNumber(const std::string& text) {
    ParameterList list;
    list.addString("REG", text);
    return list;
  }

  PanelOptions options() {
    PanelOptions options;
    options.controlPort = options.ftpPort = 0;
    options.root = tree.root.path().string();
    return options;
  }
  void start(PanelOptions chosen) {
    panel = std::make_unique<PanelSimulator>(std::move(chosen), [this](const std::string& line) {
      const std::scoped_lock guard(mutex_);
      log_ += line + '\n';
    });
    std::string reason;
    ASSERT_TRUE(panel->start(reason)) << reason;
  }
  void start() { start(options()); }

  bool connect() { return connection.connect("127.0.0.1", panel->controlPort(), &recorder); }
  FtpClient ftp(const std::string& secret = "vintrosa") {
    return {"127.0.0.1", panel->ftpPort(), {.user = "target", .secret = secret}};
  }
  // A file in the tree, as `tree` takes it.
  std::string hostPathOfTree(int workplace, const std::string& file) const {
    return tree.root.path().string() + folder(workplace) + file;
  }
  // How often; `lines` stand one below the other.
  std::ptrdiff_t logged(const std::string& lines) {
    const std::scoped_lock guard(mutex_);
    std::ptrdiff_t times = 0;
    for (std::size_t at = log_.find('\n' + lines + '\n'); at != log_.npos; ++times)
      at = log_.find('\n' + lines + '\n', at + 1);
    return times;
  }
  static bool soon(const std::function<bool()>& holds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!holds()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
  }

  TestSite tree, site;
  Recorder recorder;
  XCTLConnection connection{kXctlTransportTcp};

 private:
  std::mutex mutex_;
  std::string log_ = "\n";

 protected:
  std::unique_ptr<PanelSimulator> panel;  // ends before what it logs to
};

}  // namespace tessaly
