#include "editors/LoadClipDialog.h"

#include <algorithm>
#include <utility>

namespace tessaly {
namespace {

constexpr const char* kTitle = "Load Clip";

}  // namespace

LoadClipDialog::LoadClipDialog(std::vector<std::string> clips, QWidget* parent, const std::string& current)
    : ChoiceDialog(QLatin1String(kTitle), clips, parent), clips_(std::move(clips)) {
  const auto found = std::find(clips_.begin(), clips_.end(), current);
  if (found != clips_.end()) mark(static_cast<int>(found - clips_.begin()));
}

std::string LoadClipDialog::clip() const {
  return selectedRow() < 0 ? std::string() : clips_[static_cast<std::size_t>(selectedRow())];
}

}  // namespace tessaly
