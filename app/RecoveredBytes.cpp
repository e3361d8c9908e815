#include "app/RecoveredBytes.h"

#include <utility>

#include "model/StepsText.h"
#include "platform/Files.h"

namespace tessaly {
namespace {

bool stepsLeadTo(const SiteRoot& root, const std::string& path, const MacroPlace& place,
                 const ContentCheck& check) {
  const auto text = readOwnFile(root, path);
  if (!text) return false;
  auto head = readStepsHead(*text);
  auto* const found = std::get_if<StepsHead>(&head);
  return found != nullptr && samePlace(root, found->place, place) &&
         readSteps(std::move(*found), *text, check);
}

}  // namespace

RecoveredBytes judgeRecovered(const SiteRoot& root, const RecoveryFile& file, const RecoveryRecord& record,
                              const std::string& bytes) {
  const bool hasFile = record.loose.empty() && record.target.source == PaneSource::kHarddisk;
  if (hasFile && readFile(root, record.target.file()) == bytes) return RecoveredBytes::kSaved;
  const ContentCheck check = contentCheck(bytes);
  // What was set aside was written whole.
  const bool ours = !record.check || *record.check == check ||
                    (!record.setAside && stepsLeadTo(root, file.stepsPath(), placeOf(record), check));
  return ours ? RecoveredBytes::kUnsaved : RecoveredBytes::kForeign;
}

}  // namespace tessaly
