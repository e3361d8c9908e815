#include "link/MacroNames.h"

#include <cstddef>
#include <initializer_list>

#include "platform/Text.h"

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
  const bool connected = client_.state() == kPanelConnected;
  {
    const std::scoped_lock guard(mutex_);
    tables_.fill(Tables{});
    workplace_ = connected ? workplace : kNoWorkplace;
  }
  if (connected) subscriptions_.subscribeMacroNames(workplace);
}

int MacroNames::workplace() const {
  const std::scoped_lock guard(mutex_);
  return workplace_;
}

MacroNames::Names MacroNames::names(Pane pane) const {
  const std::scoped_lock guard(mutex_);
  return tables_[index(pane)].current;
}

std::string MacroNames::name(Pane pane, int number) const {
  if (number < 0 || number >= kPanelMacroNumbers) return {};
  const std::scoped_lock guard(mutex_);
  return tables_[index(pane)].current[static_cast<std::size_t>(number)];
}

void MacroNames::showDemo() {
  const std::scoped_lock guard(mutex_);
  tables_.fill(Tables{});
  for (const Pane pane : kPanes) {
    for (const DemoMacro& macro : kDemoMacros[index(pane)]) {
      tables_[index(pane)].current[macro.number] = macro.name;
    }
  }
}

void MacroNames::received(const std::string& valueName, const ParameterValue& value) {
  const int number = macroNumberOf(valueName);
  if (number < 0 || number >= kPanelMacroNumbers) return;
  for (const Pane pane : kPanes) {
    if (!view_.showsPanel(pane)) continue;
    view_.markCurrentFamily(pane);
    if (store(pane, number, value.getAsString())) view_.rebuildMacros(pane);
  }
}

bool MacroNames::store(Pane pane, int number, const std::string& name) {
  const std::scoped_lock guard(mutex_);
  const auto entry = static_cast<std::size_t>(number);
  Tables& tables = tables_[index(pane)];
  tables.current[entry] = name;
  // An empty name that stays empty changes nothing. Macro 0 comes first and shows that there are none at all.
  const bool rebuild = number == 0 || !name.empty() || !tables.previous[entry].empty();
  tables.previous[entry] = name;
  return rebuild;
}

}  // namespace tessaly
