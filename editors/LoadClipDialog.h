#pragma once

#include <string>
#include <vector>

#include "editors/ChoiceDialog.h"

namespace tessaly {

// Asks for one of the site's clips.
class LoadClipDialog : public ChoiceDialog {
  Q_OBJECT

 public:
  explicit LoadClipDialog(std::vector<std::string> clips, QWidget* parent = nullptr);

  // The picked clip's name, as the clip list has it; empty unless OK was pressed.
  [[nodiscard]] std::string clip() const;

 private:
  std::vector<std::string> clips_;
};

}  // namespace tessaly
