#pragma once

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/MacroFile.h"
#include "panelsim/PanelSimulator.h"
#include "tests/app/WindowFixture.h"
#include "tests/support/LoadCommands.h"

namespace tessaly {

inline constexpr const char* kTwoFunctions = R"(<macro name="Two"><data>
  <cmd fid="QMF1.ME1.KEY1.ON.SET" workplace="1"><param name="state" value="0"/></cmd>
  <cmd fid="QMF1.NCSCOMMAND" workplace="1"><param name="CMD" value="23 10 05 01 "/></cmd>
  <cmd fid="QMF1.ME1.KEY1.ON.SET" workplace="1"><param name="state" value="0"/></cmd></data></macro>)";

// A panel over a folder of its own.
struct Panel {
  Panel(const std::string& address, std::uint16_t controlPort, std::uint16_t ftpPort)
      : simulator(options(address, controlPort, ftpPort, tree.root.path().string()),
                  [](const std::string&) {}) {
    tree.write(file(1, "000"), "<macro name=\"Zero\"><data></data></macro>");
    tree.write(file(1, "007"), kTwoFunctions);
    tree.write(file(2, "500"), "<macro name=\"Elsewhere\"><data></data></macro>");
    std::string reason;
    if (!simulator.start(reason)) throw std::runtime_error(reason);
  }
  static PanelOptions options(const std::string& address, std::uint16_t controlPort, std::uint16_t ftpPort,
                              const std::string& root) {
    PanelOptions options;
    options.address = address;
    options.controlPort = controlPort;
    options.ftpPort = ftpPort;
    options.root = root;
    return options;
  }
  static std::string file(int workplace, const std::string& number) {
    return "flash/data/PANEL/macro/workplace" + std::to_string(workplace) + "/macro" + number + ".mac";
  }
  [[nodiscard]] std::string read(int workplace, const std::string& number) const {
    return tree.read(file(workplace, number));
  }

  TestSite tree;
  PanelSimulator simulator;
};

// The window against simulated panels on two loopback addresses.
class PanelWindowTest : public testing::Test {
 protected:
  PanelWindowTest()
      : first_("127.0.0.1", 0, 0),
        second_("127.0.0.2", first_.simulator.controlPort(), first_.simulator.ftpPort()),
        fixture_(client(), first_.simulator.ftpPort()) {}
  ~PanelWindowTest() override {
    fixture_.window.reset();  // without a question about unsaved work
    client().disconnect();
  }

  static PanelClient& client() {
    static auto* client = new PanelClient;
    return *client;
  }

  [[nodiscard]] WindowDriver& driver() { return *fixture_.driver; }
  [[nodiscard]] std::string addressOf(const Panel& panel) const {
    return panel.simulator.address() + ":" + std::to_string(panel.simulator.controlPort());
  }

  void choosePanel(Pane pane, const std::string& address) {
    const auto& ids = WindowFixture::ids(pane);
    driver().press(ids.panel);
    auto& edit = driver().control<QLineEdit>(ids.address);
    if (!edit.isEnabled()) return;
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, QString::fromStdString(address));
  }
  void connectPane(Pane pane, const Panel& panel) {
    const auto& ids = WindowFixture::ids(pane);
    choosePanel(pane, addressOf(panel));
    driver().press(ids.connectButton);
    awaitRow(ids.applications, "connected to " + addressOf(panel));
    awaitRow(ids.workplaces, "Workplace 2");
  }
  void chooseWorkplace(Pane pane, int workplace, const std::string& expected) {
    const auto& ids = WindowFixture::ids(pane);
    driver().choose(ids.workplaces, "Workplace " + std::to_string(workplace));
    awaitRow(ids.macros, expected);
  }
  void awaitRow(int listId, const std::string& text) {
    WindowDriver::waitFor(
        [&] {
          const auto rows = driver().texts(listId);
          return std::find(rows.begin(), rows.end(), text) != rows.end();
        },
        text.c_str());
  }
  void awaitGone(int listId, const std::string& text) {
    WindowDriver::waitFor(
        [&] {
          const auto rows = driver().texts(listId);
          return std::find(rows.begin(), rows.end(), text) == rows.end();
        },
        text.c_str());
  }
  void copyTo(int button, int number) {
    driver().press(button, [number](QDialog& dialog) {
      WindowDriver::type(dialog, "position", QString::number(number));
      WindowDriver::click(dialog, QStringLiteral("OK"));
    });
  }
  [[nodiscard]] std::string button(Pane pane) {
    return driver().control<QAbstractButton>(WindowFixture::ids(pane).connectButton).text().toStdString();
  }
  [[nodiscard]] std::vector<std::string> values(const std::string& bytes) {
    fixture_.site.write("c:\\check.mac", bytes);
    MacroCommands commands;
    EXPECT_TRUE(loadCommands(fixture_.site.access(), "c:\\check.mac", commands));
    std::vector<std::string> result;
    for (const MacroCommand& command : commands) result.push_back(command.parameters.front().value);
    return result;
  }

  Panel first_, second_;
  WindowFixture fixture_;
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = WindowFixture::ids(Pane::kB);
};

}  // namespace tessaly
