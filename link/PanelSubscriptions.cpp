#include "link/PanelSubscriptions.h"

#include "link/MacroNames.h"
#include "link/Pane.h"

namespace tessaly {

PanelSubscriptions::~PanelSubscriptions() {
  if (registered_) dropAll();
}

void PanelSubscriptions::subscribeWorkplaceCounts() {
  registered_ = true;
  for (int workplace = 1; workplace <= kWorkplaces; ++workplace) {
    client_.subscribe("PANEL.WP" + std::to_string(workplace) + ".MFDCOUNT", this,
                      &PanelSubscriptions::workplaceCountReceived);
  }
}

void PanelSubscriptions::subscribeMacroNames(int workplace) {
  registered_ = true;
  for (int number = 0; number < kPanelMacroNumbers; ++number) {
    client_.subscribe(macroNameValue(workplace, number), this, &PanelSubscriptions::macroNameReceived);
  }
}

void PanelSubscriptions::unsubscribeMacroNames(int workplace) {
  std::vector<std::string> names;
  names.reserve(kPanelMacroNumbers);
  for (int number = 0; number < kPanelMacroNumbers; ++number)
    names.push_back(macroNameValue(workplace, number));
  client_.unsubscribe(names, this, &PanelSubscriptions::macroNameReceived);
}

bool PanelSubscriptions::subscribeCommandValue(const std::string& name) {
  registered_ = true;
  return client_.subscribe(name, this, &PanelSubscriptions::commandValueReceived);
}

void PanelSubscriptions::unsubscribeCommandValues(const std::vector<std::string>& names) {
  client_.unsubscribe(names, this, &PanelSubscriptions::commandValueReceived);
}

void PanelSubscriptions::dropAll() {
  client_.unsubscribeOwner(this);
  registered_ = false;
}

void PanelSubscriptions::workplaceCountReceived(const std::string& name, const ParameterValue& value) {
  workplaceCount_(name, value);
}

void PanelSubscriptions::macroNameReceived(const std::string& name, const ParameterValue& value) {
  macroName_(name, value);
}

void PanelSubscriptions::commandValueReceived(const std::string& name, const ParameterValue& value) {
  commandValue_(name, value);
}

}  // namespace tessaly
