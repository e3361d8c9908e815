#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "editors/ChoiceDialog.h"
#include "values/SourceNames.h"

namespace tessaly {

// Asks for a source. The row counts in the sources that were given; what it stands for is the caller's to
// tell.
class SelectInputDialog : public ChoiceDialog {
  Q_OBJECT

 public:
  // `title` is the window's title, such as "Select Input".
  SelectInputDialog(const QString& title, const std::vector<PanelSource>& sources, QWidget* parent = nullptr);
  // For a classic command: the source that stands now is marked, and its source hold is asked for too.
  SelectInputDialog(const QString& title, const std::vector<ClassicSource>& sources,
                    std::optional<std::uint8_t> current, bool hold, QWidget* parent = nullptr);

  [[nodiscard]] bool hold() const;

 private:
  QCheckBox* hold_ = nullptr;  // for a classic command only
};

}  // namespace tessaly
