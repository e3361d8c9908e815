#include "app/RecoveryFile.h"

#include <chrono>

#include "link/PanelMacros.h"
#include "model/FramedRecord.h"
#include "model/RecordText.h"
#include "platform/Files.h"
#include "platform/SitePlace.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr const char* kFolder = "recovery";
constexpr std::size_t kLargestRecord = 64 * 1024;  // bytes

// The fields of a record beside those of a place.
constexpr const char* kName = "name";
constexpr const char* kSince = "since";
constexpr const char* kEdited = "edited";
constexpr const char* kAside = "aside";
constexpr const char* kLoose = "loose";
constexpr const char* kHeldSize = "held-size";
constexpr const char* kHeldCheck = "held-check";

// The target of a macro on disk is its folder and number.
bool splitFile(const std::string& file, MacroTarget& target) {
  const std::string last(fileNameOf(file));
  if (last.size() <= kMacroFileStart.size() + kMacroFileEnd.size()) return false;
  target.folder = file.substr(0, file.size() - last.size());
  target.numberText =
      last.substr(kMacroFileStart.size(), last.size() - kMacroFileStart.size() - kMacroFileEnd.size());
  return !target.folder.empty() && target.file() == file;
}

}  // namespace

MacroPlace placeOf(const RecoveryRecord& record) {
  return record.loose.empty() ? placeOf(record.target) : MacroPlace{record.loose, {}, 0, {}};
}

std::int64_t millisecondsNow() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

RecoveryFile::RecoveryFile(const SiteRoot& root, char letter)
    : root_(root),
      folder_(kFolder),
      record_(folder_ + "\\pane" + letter + ".txt"),
      beside_(folder_ + "\\pane" + letter + ".mac"),
      steps_(folder_ + "\\pane" + letter + ".steps"),
      besideSteps_(folder_ + "\\pane" + letter + "-aside.steps") {}

Outcome RecoveryFile::write(const RecoveryRecord& record) const {
  RecordText text;
  text.set(placeOf(record));
  text.set(kName, record.target.name);
  text.set(kSince, static_cast<std::uint64_t>(record.since));
  text.set(kEdited, static_cast<std::uint64_t>(record.edited));
  if (record.check) setCheck(text, *record.check);
  if (record.held) {
    text.set(kHeldSize, record.held->size);
    text.set(kHeldCheck, record.held->sum);
  }
  if (record.setAside) text.set(kAside, std::string_view("yes"));
  if (!record.loose.empty()) text.set(kLoose, std::string_view("yes"));
  if (auto made = makeOwnFolder(root_.resolve(folder_)); !made) return made;
  auto written = writeFile(root_, record_, text.text());
  if (written && !record.setAside) removeBeside();
  return written;
}

void RecoveryFile::remove() const {
  static_cast<void>(removeFile(root_, record_));
  removeBeside();
}

void RecoveryFile::removeBeside() const {
  static_cast<void>(removeFile(root_, beside_));
  static_cast<void>(removeFile(root_, besideSteps_));
}

void RecoveryFile::setStepsAside() const { static_cast<void>(moveOwnFile(root_, steps_, besideSteps_)); }

void RecoveryFile::bringStepsBack() const { static_cast<void>(moveOwnFile(root_, besideSteps_, steps_)); }

bool RecoveryFile::isMissing() const {
  const auto record = read();
  return !record && isNothing(record.failure());
}

Expected<RecoveryRecord> RecoveryFile::read() const {
  const Failure damaged{Failure::Kind::kChanged, "is damaged"};
  const auto bytes = readFile(root_, record_, kLargestRecord);
  if (!bytes) return bytes.failure().kind == Failure::Kind::kTooLarge ? damaged : bytes.failure();
  const auto text = RecordText::parse(*bytes);
  const auto place = text ? text->place() : std::nullopt;
  if (!place) return damaged;
  RecoveryRecord record;
  record.target.name = text->get(kName);
  if (place->file.empty()) {
    record.target.source = PaneSource::kPanel;
    record.target.address = place->address;
    record.target.workplace = place->workplace;
    record.target.numberText = place->number;
    // As every text that names a macro of a panel.
    if (remoteMacroPath(place->workplace, place->number).empty()) return damaged;
  } else if (!text->get(kLoose).empty()) {
    record.loose = place->file;
  } else if (!splitFile(place->file, record.target)) {
    return damaged;
  }
  const auto since = text->number(kSince);
  const auto edited = text->number(kEdited);
  if (!since || !edited) return damaged;
  record.since = static_cast<std::int64_t>(*since);
  record.edited = static_cast<std::int64_t>(*edited);
  record.check = checkIn(*text);
  if (const auto size = text->number(kHeldSize), sum = text->number(kHeldCheck); size && sum)
    record.held = ContentCheck{*size, *sum};
  record.setAside = !text->get(kAside).empty();
  return record;
}

}  // namespace tessaly
