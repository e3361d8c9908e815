// A step in the window "Rehearse", until it is painted.
#include <algorithm>
#include <chrono>
#include <vector>

#include <QSlider>
#include <QTableView>
#include <QTest>

#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "bench/window/Desk.h"
#include "windows/RehearseWindow.h"

namespace tessaly::bench::rehearse_rows {
namespace {

constexpr std::size_t kManyCommands = 10'000;  // each of a value of its own
constexpr double kFrame = 0.016;               // seconds
constexpr int kSteps = 50;

// Counts what is painted.
class Paints : public QObject {
 public:
  explicit Paints(QWidget* watched) { watched->installEventFilter(this); }
  int count = 0;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return QObject::eventFilter(watched, event);
  }
};

struct Rehearsing {
  FunctionSample sample;
  DecodingLists lists{sample.root};
  PanelClient client;
  std::unique_ptr<RehearseWindow> window;
  QSlider* slider = nullptr;
  std::unique_ptr<Paints> values, grid;

  Rehearsing() {
    toolkit();
    std::string text = "<macro name=\"Many\"><data>";
    for (std::size_t i = 0; i < kManyCommands; ++i) text += sample.command(i, 1, static_cast<int>(i % 10));
    const auto macro = Macro::read(text + "</data></macro>");
    require(macro.has_value());
    window = std::make_unique<RehearseWindow>(
        RehearseWays{[held = *macro] {
                       return RehearseSource{"Many", {}, 1, [held] { return Expected<Macro>(held); }};
                     },
                     [] { return QString(); }, [](const Failure&) { return QString(); }},
        client, LineContext{sample.dictionary, lists}, LineOptions());
    slider = window->findChild<QSlider*>(QStringLiteral("slider"));
    values = paintsOf("values");
    grid = paintsOf("grid");
    window->show();
    require(QTest::qWaitFor([this] { return slider->maximum() == static_cast<int>(kManyCommands); }));
  }
  std::unique_ptr<Paints> paintsOf(const char* table) const {
    return std::make_unique<Paints>(window->findChild<QTableView*>(QLatin1String(table))->viewport());
  }
};

// The slowest of 100 but for one, here and there in the macro: to the next step, and ten steps on.
Figures stepUntilPainted() {
  static auto& on = *new Rehearsing;
  std::vector<double> times;
  for (int i = 0; i < kSteps; ++i) {
    on.slider->setValue(i * 997 % static_cast<int>(kManyCommands));
    QApplication::processEvents();
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_PageDown}) {
      const int values = on.values->count, grid = on.grid->count;
      const auto start = std::chrono::steady_clock::now();
      QTest::keyClick(on.slider, key);
      while (on.values->count == values || on.grid->count == grid) QApplication::processEvents();
      times.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
  }
  std::sort(times.begin(), times.end());
  return {times[times.size() - 2], kFrame};
}

const bool kRegistered[] = {addFigure({.name = "a step of \"Rehearse\" until it is painted, 10,000 commands",
                                       .unit = kSeconds,
                                       .take = stepUntilPainted})};

}  // namespace
}  // namespace tessaly::bench::rehearse_rows
