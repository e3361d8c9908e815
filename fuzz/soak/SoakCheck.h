#pragma once

#include <string>

#include "fuzz/soak/Desk.h"
#include "fuzz/soak/SoakModel.h"

namespace tessaly {

// Brings the window to rest, all values of the panels delivered, and compares it and all files with the
// model: the first difference, or an empty text. What the model cannot know (how much of a broken upload
// came) is taken over.
class SoakCheck {
 public:
  SoakCheck(Desk& desk, SoakModel& model) : desk_(desk), model_(model) {}

  [[nodiscard]] std::string difference();

 private:
  [[nodiscard]] std::string lineDifference() const;
  [[nodiscard]] std::string paneDifference(Pane pane);
  [[nodiscard]] std::string listsDifference(Pane pane);
  [[nodiscard]] std::string fileDifference();
  void takeBrokenUpload();

  Desk& desk_;
  SoakModel& model_;
};

// Macro files of a folder by number.
[[nodiscard]] ModelFiles readMacroFiles(const TestSite& site, const std::string& folder);
[[nodiscard]] std::string panelFolder(int workplace);

}  // namespace tessaly
