#include "editors/LoadClipDialog.h"

#include <utility>

namespace tessaly {
namespace {

constexpr const char* kTitle = "Load Clip";

}  // namespace

LoadClipDialog::LoadClipDialog(std::vector<std::string> clips, QWidget* parent)
    : ChoiceDialog(QLatin1String(kTitle), clips, parent), clips_(std::move(clips)) {}

std::string LoadClipDialog::clip() const {
  return selectedRow() < 0 ? std::string() : clips_[static_cast<std::size_t>(selectedRow())];
}

}  // namespace tessaly
