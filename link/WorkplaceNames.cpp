#include "link/WorkplaceNames.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

#include "link/MacroNames.h"
#include "platform/MacroNumber.h"
#include "platform/SystemFailure.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kLookAround{50};  // how soon a cancel or a lost line is noticed

// What arrives on the library's thread, for the one that waits.
class Names {
 public:
  Names(PanelClient& client, int workplace) : client_(client) {
    for (int number = 0; number < MacroNumber::kCount; ++number)
      values_.push_back(macroNameValue(workplace, number));
    for (const std::string& value : values_) client_.subscribe(value, this, &Names::received);
  }
  ~Names() { client_.unsubscribe(values_, this, &Names::received); }
  Names(const Names&) = delete;
  Names& operator=(const Names&) = delete;

  // False when the line has gone or the user has cancelled.
  [[nodiscard]] bool wait(const std::atomic<bool>& cancelled, milliseconds patience) {
    std::unique_lock guard(mutex_);
    std::size_t seen = 0;
    auto deadline = Clock::now() + patience;
    while (names_.size() < static_cast<std::size_t>(MacroNumber::kCount) && Clock::now() < deadline) {
      if (cancelled || client_.state() != kPanelConnected) return false;
      changed_.wait_until(guard, std::min(deadline, Clock::now() + kLookAround));
      if (names_.size() > seen) deadline = Clock::now() + patience;
      seen = names_.size();
    }
    return true;
  }

  [[nodiscard]] std::map<int, std::string> take() {
    const std::scoped_lock guard(mutex_);
    return std::move(names_);
  }

 private:
  void received(const std::string& name, const ParameterValue& value) {
    const int number = macroNumberOf(name);
    if (!MacroNumber::of(number)) return;
    const std::scoped_lock guard(mutex_);
    names_[number] = value.getAsString();
    changed_.notify_one();
  }

  PanelClient& client_;
  std::vector<std::string> values_;
  std::mutex mutex_;  // over what follows; never held while calling out
  std::condition_variable changed_;
  std::map<int, std::string> names_;
};

}  // namespace

Expected<std::map<int, std::string>> readWorkplaceNames(PanelClient& client, int workplace,
                                                        const std::atomic<bool>& cancelled,
                                                        milliseconds patience) {
  Names arriving(client, workplace);
  const bool stood = arriving.wait(cancelled, patience);
  if (cancelled) return cancelledFailure();
  if (!stood) return Failure{Failure::Kind::kPanel, "the connection to the panel was lost"};
  auto names = arriving.take();
  if (names.empty()) return Failure{Failure::Kind::kPanel, "the panel sent no macro names"};
  std::map<int, std::string> known;
  for (int number = 0; number < MacroNumber::kCount; ++number) {
    const auto name = names.find(number);
    if (name == names.end() || !name->second.empty())
      known[number] = name == names.end() ? std::string() : std::move(name->second);
  }
  return known;
}

}  // namespace tessaly
