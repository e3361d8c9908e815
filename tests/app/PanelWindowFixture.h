#pragma once

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include <QLabel>
#include <QProgressDialog>

#include "panelsim/PanelSimulator.h"
#include "tests/app/WindowFixture.h"

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
  // With commands of these functions, each with the value 0.
  static std::string macro(const std::string& name, const std::vector<std::string>& fids) {
    std::string text = "<macro name=\"" + name + "\"><data>";
    for (const std::string& fid : fids)
      text += "<cmd fid=\"" + fid + "\" workplace=\"1\"><param name=\"state\" value=\"0\"/></cmd>";
    return text + "</data></macro>";
  }
  [[nodiscard]] std::string read(int workplace, const std::string& number) const {
    return tree.read(file(workplace, number));
  }

  TestSite tree;
  PanelSimulator simulator;
};

// Two of them, on loopback addresses with the same ports.
struct Panels {
  Panel first_{"127.0.0.1", 0, 0};
  Panel second_{"127.0.0.9", first_.simulator.controlPort(), first_.simulator.ftpPort()};
};

// The window against simulated panels.
class PanelWindowTest : protected Panels, public WindowTest {
 protected:
  PanelWindowTest() : WindowTest(client(), first_.simulator.ftpPort()) {}
  ~PanelWindowTest() override {
    fixture_.window.reset();  // without a question about unsaved work
    client().disconnect();
  }

  static PanelClient& client() {
    static auto* client = new PanelClient;
    return *client;
  }

  // With a zero that no call of the system reads as people mean it: 09 is no octal number.
  [[nodiscard]] static std::string addressOf(const Panel& panel) {
    return std::string(panel.simulator.address()).insert(8, "0") + ":" +
           std::to_string(panel.simulator.controlPort());
  }

  void choosePanel(Pane pane, const std::string& address) {
    const auto& here = ids(pane);
    driver().press(here.panel);
    auto& edit = driver().control<QLineEdit>(here.address);
    if (!edit.isEnabled()) return;
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, QString::fromStdString(address));
  }
  void connectPane(Pane pane, const Panel& panel) {
    const auto& here = ids(pane);
    choosePanel(pane, addressOf(panel));
    driver().press(here.connectButton);
    awaitRow(here.applications, "connected to " + addressOf(panel));
    awaitRow(here.workplaces, "Workplace 2");
  }
  // Pane B joins the connection of pane A.
  void connectBoth(const Panel& panel) {
    choosePanel(Pane::kB, addressOf(panel));
    connectPane(Pane::kA, panel);
    driver().press(b_.connectButton);
  }
  void chooseWorkplace(Pane pane, int workplace, const std::string& expected) {
    const auto& here = ids(pane);
    driver().choose(here.workplaces, "Workplace " + std::to_string(workplace));
    awaitRow(here.macros, expected);
  }
  void awaitRow(int listId, const std::string& text, bool there = true) {
    WindowDriver::waitFor(
        [&] {
          const auto rows = driver().texts(listId);
          return (std::find(rows.begin(), rows.end(), text) != rows.end()) == there;
        },
        text.c_str());
  }
  void awaitGone(int listId, const std::string& text) { awaitRow(listId, text, false); }
  void awaitStatus(const std::string& text) {
    WindowDriver::waitFor([&] { return told() == text; }, text.c_str());
  }
  void awaitEdited(Pane pane) {
    WindowDriver::waitFor([this, pane] { return edited(pane); }, "edit state");
  }
  void awaitInFile(Pane pane, const std::vector<std::string>& expected) {
    WindowDriver::waitFor([&] { return valuesInFile(pane) == expected; }, "the values in the file");
  }
  static void stallTransfers(Panel& panel) {
    PanelFaults faults;
    faults.ftp.stallTransfer = true;
    ASSERT_TRUE(panel.simulator.setFaults(faults));
  }
  [[nodiscard]] std::string button(Pane pane) {
    return driver().control<QAbstractButton>(ids(pane).connectButton).text().toStdString();
  }
  [[nodiscard]] std::string label(int id) { return driver().control<QLabel>(id).text().toStdString(); }
  [[nodiscard]] EventGate& gate() { return fixture_.window->gate(); }
  [[nodiscard]] std::string progress(Pane pane) { return label(ids(pane).progress); }
  [[nodiscard]] bool transferShown() {
    const auto* progress = fixture_.window->findChild<QProgressDialog*>();
    return progress != nullptr && progress->isVisible();
  }
  [[nodiscard]] std::vector<std::string> valuesInFile(Pane pane) { return values(held(pane)); }
  [[nodiscard]] std::vector<std::string> values(const std::string& bytes) {
    fixture_.site.write("c:\\check.mac", bytes);
    std::vector<std::string> result;
    for (const MacroCommand& command : commandsOf("c:\\check.mac"))
      result.push_back(command.parameters.front().value);
    return result;
  }
};

}  // namespace tessaly
