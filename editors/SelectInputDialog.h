#pragma once

#include <vector>

#include "editors/ChoiceDialog.h"
#include "values/SourceNames.h"

namespace tessaly {

// Asks for a source. The row counts in `sources`; what it stands for is the caller's to tell.
class SelectInputDialog : public ChoiceDialog {
  Q_OBJECT

 public:
  // `title` is the window's title, such as "Select Input".
  SelectInputDialog(const QString& title, const std::vector<PanelSource>& sources, QWidget* parent = nullptr);
};

}  // namespace tessaly
