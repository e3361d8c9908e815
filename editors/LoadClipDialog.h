#pragma once

#include <string>
#include <vector>

#include "editors/ChoiceDialog.h"

namespace tessaly {

// Asks for one of the site's clips.
class LoadClipDialog : public ChoiceDialog {
  Q_OBJECT

 public:
  // `current` is marked when it is one of them.
  explicit LoadClipDialog(std::vector<std::string> clips, QWidget* parent = nullptr,
                          const std::string& current = {});

  // The picked clip's name, as the clip list has it; empty unless OK was pressed.
  [[nodiscard]] std::string clip() const;

 private:
  std::vector<std::string> clips_;
};

}  // namespace tessaly
