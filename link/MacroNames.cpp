#include "link/MacroNames.h"

#include <cstddef>
#include <initializer_list>

#include "platform/Text.h"
#include "xctl/WireText.h"

namespace tessaly {
namespace {

struct DemoMacro {
  std::size_t number;
  const char* name;
};

constexpr DemoMacro kDemoMacros[][3] = {
    {{1, "M001"}, {35, "MyTest"}, {46, "MySurprise"}},  // pane A
    {{1, "M001"}, {13, "MyHope"}, {18, "MyDay"}},       // pane B
};

std::string keptName(std::string name) {
  if (name.size() <= kLongestMacroName) return name;
  std::size_t end = kLongestMacroName;
  while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xc0U) == 0x80U) --end;  // within a character
  name.resize(end);
  return name + "…";
}

}  // namespace

std::string macroNameValue(int workplace, int number) {
  return "PANEL.MACRO" + std::to_string(workplace) + ".REG" + std::to_string(number) + ".NAME";
}

int macroNumberOf(std::string_view valueName) {
  for (int field = 0; field < 2; ++field) {
    const std::size_t dot = valueName.find('.');
    if (dot == std::string_view::npos) return -1;
    valueName.remove_prefix(dot + 1);
  }
  const std::string_view third = valueName.substr(0, valueName.find('.'));
  constexpr std::string_view kRegister = "REG";
  const std::size_t start = third.find(kRegister);
  return start == std::string_view::npos ? -1 : parseInt(third.substr(start + kRegister.size()));
}

MacroNames::MacroNames(PanelClient& client, PanelSubscriptions& subscriptions, MacroNamesView& view)
    : client_(client), subscriptions_(subscriptions), view_(view) {
  subscriptions_.onMacroName([this](const auto& name, const auto& value) { received(name, value); });
}

void MacroNames::subscribe(int workplace) {
  if (const int old = this->workplace(); old != kNoWorkplace) subscriptions_.unsubscribeMacroNames(old);
  connection_ = client_.connectionNumber();
  const bool connected = client_.state() == kPanelConnected;
  {
    const MutexLock guard(mutex_);
    tables_.fill(Names());
    requests_.clear();
    workplace_ = connected ? workplace : kNoWorkplace;
  }
  if (connected) subscriptions_.subscribeMacroNames(workplace);
}

void MacroNames::renew(int workplace) {
  if (client_.state() == kPanelConnected && client_.connectionNumber() != connection_) subscribe(workplace);
}

int MacroNames::workplace() const {
  const MutexLock guard(mutex_);
  return workplace_;
}

MacroNames::Names MacroNames::names(Pane pane) const {
  const MutexLock guard(mutex_);
  const Names& table = tables_[index(pane)];
  return table.empty() ? Names(MacroNumber::kCount) : table;
}

std::string MacroNames::name(Pane pane, int number) const {
  const auto known = MacroNumber::of(number);
  if (!known) return {};
  const MutexLock guard(mutex_);
  const Names& table = tables_[index(pane)];
  return table.empty() ? std::string() : table[known->index()];
}

void MacroNames::showDemo() {
  const MutexLock guard(mutex_);
  tables_.fill(Names());
  for (const Pane pane : kPanes) {
    Names& table = tables_[index(pane)];
    table.resize(MacroNumber::kCount);
    for (const DemoMacro& macro : kDemoMacros[index(pane)]) table[macro.number] = macro.name;
  }
}

void MacroNames::received(const std::string& valueName, const ParameterValue& value) {
  const auto number = MacroNumber::of(macroNumberOf(valueName));
  if (!number) return;
  const std::string text = value.getAsString();
  const std::string name = keptName(text);
  std::array<bool, kPanes.size()> concerned{};
  for (const Pane pane : kPanes) concerned[index(pane)] = view_.showsPanel(pane);
  {
    const MutexLock guard(mutex_);
    const auto request = requests_.find(number->value());
    if (request != requests_.end() && request->second.name == text) requests_.erase(request);
    for (const Pane pane : kPanes)
      concerned[index(pane)] = concerned[index(pane)] && store(pane, *number, name);
  }
  for (const Pane pane : kPanes)
    if (concerned[index(pane)]) view_.rebuildMacros(pane);
}

void MacroNames::expect(int number, const std::string& name, Clock::time_point now) {
  const std::string sent = wireText(name);
  const MutexLock guard(mutex_);
  requests_.erase(number);
  if (workplace_ == kNoWorkplace || !MacroNumber::of(number)) return;
  for (const Names& table : tables_)
    if (!sent.empty() && !table.empty() && table[static_cast<std::size_t>(number)] == sent) return;
  requests_[number] = {sent, now + kConfirmation};
}

void MacroNames::forget(int number) {
  const MutexLock guard(mutex_);
  requests_.erase(number);
}

std::vector<MacroNames::Request> MacroNames::takeUnconfirmed(Clock::time_point now) {
  const bool gone = client_.state() == kPanelNotConnected;
  std::vector<Request> unconfirmed;
  const MutexLock guard(mutex_);
  std::erase_if(requests_, [&, workplace = workplace_](const auto& entry) {
    const auto& [number, expected] = entry;
    if (!gone && now < expected.until) return false;
    unconfirmed.push_back({workplace, number, expected.name});
    return true;
  });
  return unconfirmed;
}

bool MacroNames::store(Pane pane, MacroNumber number, const std::string& name) {
  Names& table = tables_[index(pane)];
  if (table.empty()) table.resize(MacroNumber::kCount);
  std::string& known = table[number.index()];
  const bool hadName = !known.empty();
  known = name;
  // An empty name that stays empty changes nothing. Macro 0 comes first and shows that there are none at all.
  return number.index() == 0 || !name.empty() || hadName;
}

}  // namespace tessaly
