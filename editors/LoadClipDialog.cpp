#include "editors/LoadClipDialog.h"

#include <utility>

namespace tessaly {

LoadClipDialog::LoadClipDialog(std::vector<std::string> clips, QWidget* parent)
    : ChoiceDialog(tr("Load Clip"), clips, parent), clips_(std::move(clips)) {}

std::string LoadClipDialog::clip() const {
  return selectedRow() < 0 ? std::string() : clips_[static_cast<std::size_t>(selectedRow())];
}

}  // namespace tessaly
