#include "model/KeptMacro.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "model/MacroNameScan.h"
#include "model/RecordText.h"

namespace tessaly {
namespace {

constexpr std::pair<MacroChange, std::string_view> kWords[] = {
    {MacroChange::kSave, "save"},     {MacroChange::kCopy, "copy"},        {MacroChange::kCreate, "create"},
    {MacroChange::kRename, "rename"}, {MacroChange::kDelete, "delete"},    {MacroChange::kConvert, "convert"},
    {MacroChange::kEdit, "edit"},     {MacroChange::kPutBack, "put-back"}, {MacroChange::kUnsaved, "unsaved"},
};

constexpr const char* kChange = "change";
constexpr const char* kName = "name";

}  // namespace

std::string_view changeWord(MacroChange change) {
  const auto* const found = std::find_if(std::begin(kWords), std::end(kWords),
                                         [change](const auto& word) { return word.first == change; });
  return found == std::end(kWords) ? std::string_view() : found->second;
}

MacroChange changeOfWord(std::string_view word) {
  const auto* const found = std::find_if(std::begin(kWords), std::end(kWords),
                                         [word](const auto& row) { return row.second == word; });
  return found == std::end(kWords) ? MacroChange::kSave : found->first;
}

std::string historyRecord(std::string_view bytes, const MacroPlace& place, MacroChange change) {
  RecordText record;
  record.set(place);
  record.set(kChange, changeWord(change));
  record.set(kName, macroNameIn(bytes));
  return record.text();
}

void KeptMacro::takeRecord(std::string_view text) {
  const auto record = RecordText::parse(text);
  if (!record) return;
  place = record->place();
  name = record->get(kName);
  change = changeOfWord(record->get(kChange));
}

std::string KeptMacro::placeText() const {
  if (!place) return {};
  if (!place->file.empty()) return place->file;
  return place->address.text() + " workplace " + std::to_string(place->workplace) + " macro " + place->number;
}

}  // namespace tessaly
