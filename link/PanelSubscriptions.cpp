#include "link/PanelSubscriptions.h"

#include "link/MacroNames.h"
#include "link/Pane.h"
#include "platform/MacroNumber.h"
#include "platform/Workplace.h"

namespace tessaly {

PanelSubscriptions::~PanelSubscriptions() { dropAll(); }

void PanelSubscriptions::subscribeWorkplaceCounts() {
  for (int workplace = 1; workplace <= Workplace::kCount; ++workplace) {
    client_.subscribe("PANEL.WP" + std::to_string(workplace) + ".MFDCOUNT", this,
                      &PanelSubscriptions::workplaceCountReceived);
  }
}

void PanelSubscriptions::subscribeMacroNames(int workplace) {
  for (int number = 0; number < MacroNumber::kCount; ++number) {
    client_.subscribe(macroNameValue(workplace, number), this, &PanelSubscriptions::macroNameReceived);
  }
}

void PanelSubscriptions::unsubscribeMacroNames(int workplace) {
  std::vector<std::string> names;
  names.reserve(MacroNumber::kCount);
  for (int number = 0; number < MacroNumber::kCount; ++number)
    names.push_back(macroNameValue(workplace, number));
  client_.unsubscribe(names, this, &PanelSubscriptions::macroNameReceived);
}

void PanelSubscriptions::dropAll() { client_.unsubscribeOwner(this); }

void PanelSubscriptions::workplaceCountReceived(const std::string& name, const ParameterValue& value) {
  workplaceCount_(name, value);
}

void PanelSubscriptions::macroNameReceived(const std::string& name, const ParameterValue& value) {
  macroName_(name, value);
}

}  // namespace tessaly
