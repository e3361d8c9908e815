#include "editors/SelectInputDialog.h"

#include <algorithm>

#include <QCheckBox>

namespace tessaly {

namespace {

template <class Source>
std::vector<std::string> namesOf(const std::vector<Source>& sources, std::string Source::*name) {
  std::vector<std::string> names;
  names.reserve(sources.size());
  for (const Source& source : sources) names.push_back(source.*name);
  return names;
}

}  // namespace

SelectInputDialog::SelectInputDialog(const QString& title, const std::vector<PanelSource>& sources,
                                     QWidget* parent)
    : ChoiceDialog(title, namesOf(sources, &PanelSource::displayName), parent) {}

SelectInputDialog::SelectInputDialog(const QString& title, const std::vector<ClassicSource>& sources,
                                     std::optional<std::uint8_t> current, bool hold, QWidget* parent)
    : ChoiceDialog(title, namesOf(sources, &ClassicSource::name), parent) {
  const auto stands = [current](const ClassicSource& source) { return source.number == current; };
  const auto found = std::find_if(sources.begin(), sources.end(), stands);
  if (found != sources.end()) mark(static_cast<int>(found - sources.begin()));
  hold_ = new QCheckBox(tr("source hold"), this);
  hold_->setObjectName(QStringLiteral("hold"));
  hold_->setChecked(hold);
  ask(*hold_);
}

bool SelectInputDialog::hold() const { return hold_ != nullptr && hold_->isChecked(); }

}  // namespace tessaly
