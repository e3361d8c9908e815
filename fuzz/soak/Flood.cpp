#include "fuzz/soak/Flood.h"

#include <atomic>
#include <cstdio>
#include <thread>

#include <QElapsedTimer>

#include "app/PaneDescriptor.h"
#include "fuzz/soak/FaultCells.h"

namespace tessaly {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kConnectTime{2000}, kPulse{1}, kWarmUp{10000}, kBetweenUpdates{2000};
constexpr int kValuesAPulse = 10;    // 10,000 a second
constexpr int kFunctions = 500;      // that are registered
constexpr int kFloodedNames = 40;    // of macros, of the 1000 that the panes follow
constexpr long kFirstValue = 1000;   // no value is the one before: that is no news
constexpr int kNameEach = 10;        // every so manyth value is a macro's name
constexpr qint64 kLongestGap = 100;  // milliseconds
constexpr std::size_t kMegabyte = std::size_t{1024} * 1024;
constexpr std::size_t kFlat = 8 * kMegabyte, kPatientFlat = 64 * kMegabyte;

// Counts what arrives, on the library's thread.
class Receiver {
 public:
  void take(const std::string&, const ParameterValue&) { ++count_; }
  [[nodiscard]] long count() const { return count_; }

 private:
  std::atomic<long> count_{0};
};

// The longest time between two turns of the event loop.
class Pulse : public QObject {
 public:
  Pulse() {
    since_.start();
    connect(&timer_, &QTimer::timeout, this, [this] { longest_ = std::max(longest_, since_.restart()); });
    timer_.start(1);
  }
  [[nodiscard]] qint64 longest() const { return longest_; }

 private:
  QTimer timer_;
  QElapsedTimer since_;
  qint64 longest_ = 0;
};

// Sends from a thread of its own until it ends.
class Sender {
 public:
  Sender(PanelSimulator& panel, std::vector<std::string> functions, std::chrono::seconds time)
      : thread_([this, &panel, functions = std::move(functions), time] { send(panel, functions, time); }) {}
  ~Sender() { thread_.join(); }

  [[nodiscard]] bool done() const { return done_; }
  [[nodiscard]] long sent() const { return sent_; }

 private:
  void send(PanelSimulator& panel, const std::vector<std::string>& functions, std::chrono::seconds time) {
    const auto pulses = std::chrono::duration_cast<milliseconds>(time) / kPulse;
    auto next = Clock::now();
    for (long pulse = 0; pulse < pulses; ++pulse) {
      for (int i = 0; i < kValuesAPulse; ++i) {
        const long number = sent_++;
        if (number % kNameEach == 0)
          panel.set("PANEL.MACRO1.REG" + std::to_string(100 + number / kNameEach % kFloodedNames) + ".NAME",
                    "Name " + std::to_string(number));
        else
          panel.set(functions[static_cast<std::size_t>(number) % functions.size()],
                    std::to_string(kFirstValue + number));
      }
      next += kPulse;
      std::this_thread::sleep_until(next);
    }
    done_ = true;
  }

  std::atomic<bool> done_{false};
  std::atomic<long> sent_{0};
  std::thread thread_;
};

std::vector<std::string> registered(Desk& desk, Receiver& receiver) {
  std::vector<std::string> names;
  const FunctionDictionary& dictionary = deskDictionary();
  for (std::size_t i = 0; names.size() < kFunctions && i < dictionary.functionCount(); i += 7)
    if (const std::string sid = dictionary.function(i).sid(); !sid.empty()) names.push_back("QMF2." + sid);
  for (const std::string& name : names) desk.client().subscribe(name, &receiver, &Receiver::take);
  for (int number = 100; number < 100 + kFloodedNames; ++number)
    desk.client().subscribe("PANEL.MACRO1.REG" + std::to_string(number) + ".NAME", &receiver,
                            &Receiver::take);
  return names;
}

// An update of all commands, as often as there is time, and its end.
void updateNow(Desk& desk) {
  const auto& ids = Desk::ids(Pane::kA);
  desk.press(ids.updateData);
  WindowDriver::waitFor([&] { return desk.edited(Pane::kA); }, "the end of the update");
  desk.press(ids.discardChanges);
}

}  // namespace

bool runFlood(int seconds, bool patient) {
  Desk desk(kConnectTime);
  layOutMacros(desk);
  bringTo(desk, Stage::kMacro);
  desk.press(Desk::ids(Pane::kB).panel);
  Receiver receiver;
  const std::vector<std::string> functions = registered(desk, receiver);
  if (!desk.passValues(desk.first)) throw std::runtime_error("no values come");
  const long before = receiver.count();

  int updates = 0;
  std::size_t memoryBefore = 0, memoryAfter = 0;
  long sent = 0;
  qint64 longest = 0;
  QElapsedTimer time;
  {
    Sender sender(desk.first.simulator, functions, std::chrono::seconds(seconds));
    const Pulse pulse;
    time.start();
    const qint64 warm = std::min<qint64>(kWarmUp.count(), seconds * 500);
    while (!sender.done()) {
      desk.settle(kBetweenUpdates / 2);
      if (memoryBefore == 0 && time.elapsed() >= warm) memoryBefore = Desk::memory();
      updateNow(desk);
      ++updates;
    }
    longest = pulse.longest();
    memoryAfter = Desk::memory();
    sent = sender.sent();
  }
  const qint64 took = time.elapsed();
  const bool allPassed = desk.passValues(desk.first);
  const long arrived = receiver.count() - before;
  desk.client().unsubscribeOwner(&receiver);
  const double growth = (static_cast<double>(memoryAfter) - static_cast<double>(memoryBefore)) / kMegabyte;
  std::printf(
      "%ld values sent in %.1f s, %ld arrived; %d updates; memory %.1f MB and %+.1f MB at the end; "
      "longest gap of the window %lld ms\n",
      sent, static_cast<double>(took) / 1000, arrived, updates, static_cast<double>(memoryBefore) / kMegabyte,
      growth, static_cast<long long>(longest));
  const bool flat = memoryAfter < memoryBefore + (patient ? kPatientFlat : kFlat);
  return allPassed && arrived == sent && flat && (patient || longest <= kLongestGap);
}

}  // namespace tessaly
