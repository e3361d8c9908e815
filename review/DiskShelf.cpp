#include "review/DiskShelf.h"

#include <algorithm>
#include <utility>

#include "platform/Files.h"
#include "platform/SitePlace.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"
#include "review/FolderNames.h"

namespace tessaly {
namespace {

// What the file holds now, after it was written or deleted.
bool holds(const SiteRoot& root, std::string_view file, std::optional<std::string_view> bytes) {
  const auto now = readFile(root, file);
  if (!bytes) return !now && now.failure().kind == Failure::Kind::kMissing;
  return now == *bytes;
}

// Of a macro file, whatever the case of its name; nothing for any other.
std::optional<MacroNumber> numberOf(std::string_view file) {
  const bool ours = file.size() == macroFileName("000").size() &&
                    equalNoCase(file.substr(0, kMacroFileStart.size()), kMacroFileStart);
  return ours ? MacroNumber::parse(file.substr(kMacroFileStart.size(), MacroNumber::kDigits)) : std::nullopt;
}

}  // namespace

ShelfWrite writeMacroFile(const SiteRoot& root, MacroHistory& history, std::string_view file,
                          std::optional<std::string_view> bytes, std::optional<MacroChange> change,
                          const BeforeWrite& before) {
  using State = ShelfWrite::State;
  State state = State::kAsBefore;
  Outcome done = history.whileLocked(file, [&]() -> Outcome {
    ShelfStanding standing{readFile(root, file), {}};
    const bool missing = !standing.bytes && standing.bytes.failure().kind == Failure::Kind::kMissing;
    if (!standing.bytes && (!missing || !bytes)) return standing.bytes.failure();
    if (standing.bytes && change) {
      const Outcome kept = history.keep(*standing.bytes, {std::string(file), {}, 0, {}}, *change);
      if (!kept) return kept;
      standing.kept = history.takeKept();
    }
    if (Outcome wanted = before ? before(standing) : Outcome(); !wanted) return wanted;
    Outcome written = bytes ? writeFile(root, file, *bytes) : removeFile(root, file);
    if (!written.written()) return written;
    state = holds(root, file, bytes) ? State::kWritten : State::kUnknown;
    return state == State::kWritten
               ? written
               : Failure{Failure::Kind::kChanged, "holds something else than was written"};
  });
  if (done) return {state};
  return {state, done.failure(), state == State::kWritten ? done.failure().text : std::string()};
}

DiskShelf::DiskShelf(const SiteRoot& root, MacroHistory& history, std::string folder, std::string title)
    : root_(root), history_(history), folder_(std::move(folder)), title_(std::move(title)) {
  if (title_.empty()) title_ = folder_;
  if (folder_.ends_with('/') || folder_.ends_with('\\')) return;
  folder_ += folder_.starts_with('/') && folder_.find('\\') == folder_.npos ? '/' : '\\';
}

MacroPlace DiskShelf::place(MacroNumber number) const {
  return {folder_ + macroFileName(number.text()), {}, 0, {}};
}

Expected<std::vector<MacroShelf::Held>> DiskShelf::list() {
  if (cancelled_) return cancelledFailure();
  std::vector<Held> held;
  const Outcome read = eachEntryIn(
      root_, folder_, [&](const std::string& file, const std::filesystem::directory_entry& entry) {
        const auto number = endsWithNoCase(file, kMacroFileEnd) ? numberOf(file) : std::nullopt;
        if (number && mayBe(std::filesystem::file_type::regular, entry, true)) held.push_back({*number, {}});
      });
  if (!read)
    return isNothing(read.failure()) ? Failure{Failure::Kind::kMissing, "there is no such folder"}
                                     : read.failure();
  const auto value = [](const Held& macro) { return macro.number.value(); };
  std::ranges::sort(held, {}, value);
  // Those that differ in case alone are one place.
  held.erase(std::unique(held.begin(), held.end(),
                         [&](const Held& a, const Held& b) { return value(a) == value(b); }),
             held.end());
  return held;
}

Expected<std::string> DiskShelf::read(MacroNumber number) {
  if (cancelled_) return cancelledFailure();
  return readFile(root_, place(number).file);
}

Outcome DiskShelf::writable() const {
  if (isFolder(root_, folder_)) return {};
  return Failure{Failure::Kind::kMissing, "there is no such folder"};
}

ShelfWrite DiskShelf::change(MacroNumber number, std::optional<std::string_view> bytes, MacroChange change,
                             const BeforeWrite& before) {
  if (cancelled_) return {ShelfWrite::State::kAsBefore, cancelledFailure()};
  return writeMacroFile(root_, history_, place(number).file, bytes, change, before);
}

ShelfWrite DiskShelf::write(MacroNumber number, std::string_view bytes, MacroChange change,
                            const BeforeWrite& before) {
  return this->change(number, bytes, change, before);
}

ShelfWrite DiskShelf::remove(MacroNumber number, const BeforeWrite& before) {
  return change(number, std::nullopt, MacroChange::kDelete, before);
}

}  // namespace tessaly
