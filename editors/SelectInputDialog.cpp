#include "editors/SelectInputDialog.h"

namespace tessaly {

namespace {

std::vector<std::string> displayNames(const std::vector<PanelSource>& sources) {
  std::vector<std::string> names;
  names.reserve(sources.size());
  for (const PanelSource& source : sources) names.push_back(source.displayName);
  return names;
}

}  // namespace

SelectInputDialog::SelectInputDialog(const QString& title, const std::vector<PanelSource>& sources,
                                     QWidget* parent)
    : ChoiceDialog(title, displayNames(sources), parent) {}

}  // namespace tessaly
