#include "review/Snapshot.h"

#include <algorithm>
#include <map>
#include <utility>

#include "platform/Files.h"
#include "platform/Sha256.h"
#include "platform/Text.h"
#include "platform/Workplace.h"
#include "platform/ZipArchive.h"
#include "review/SnapshotManifest.h"

namespace tessaly {
namespace {

constexpr const char* kManifest = "manifest.json";
constexpr std::size_t kMostFiles = std::size_t{Workplace::kCount} * MacroNumber::kCount + 1;

Failure refused(std::string text) { return {Failure::Kind::kNoSnapshot, std::move(text)}; }
std::string inQuotes(std::string_view name) { return '"' + visibleUtf8(name) + '"'; }

bool leadsOut(std::string_view name) {
  return name.starts_with('/') || name.find('\\') != name.npos || name.find(':') != name.npos ||
         ("/" + std::string(name) + "/").find("/../") != std::string::npos;
}

Failure strangeFile(std::string_view name) {
  return refused("holds " + inQuotes(name) +
                 (leadsOut(name) ? ", a name that leads out of it" : ", which its list does not name"));
}

Expected<SnapshotManifest> manifestOf(const Snapshot& snapshot) {
  SnapshotManifest manifest{snapshot.origin, snapshot.time, snapshot.workplaces, {}};
  manifest.origin.folder = displayUtf8(manifest.origin.folder);
  manifest.origin.address = displayUtf8(manifest.origin.address);
  for (const Snapshot::Macro& macro : snapshot.macros) {
    auto sum = sha256Text(macro.bytes);
    if (!sum) return sum.failure();
    manifest.rows.push_back({macro.workplace, macro.number,
                             beginningOf(displayUtf8(macro.name), kLongestSnapshotName), macro.bytes.size(),
                             *std::move(sum)});
  }
  return manifest;
}

// What is there under the row's name, once it is what the row tells.
Expected<Snapshot::Macro> takeMacro(const SnapshotManifest::Row& row,
                                    std::map<std::string, std::string>& files) {
  const std::string path = snapshotFileOf(row.workplace, row.number);
  auto file = files.extract(path);
  if (file.empty()) return refused("lacks " + inQuotes(path) + ", which its list names");
  std::string& bytes = file.mapped();
  const auto sum = sha256Text(bytes);
  if (!sum) return sum.failure();
  if (bytes.size() != row.size || *sum != row.sum)
    return refused("holds " + inQuotes(path) +
                   ", which is not what was stored: its size or its sum is another");
  return Snapshot::Macro{row.workplace, row.number, row.name, std::move(bytes)};
}

}  // namespace

std::string snapshotFolderOf(int workplace) {
  return workplace == Snapshot::kFolder ? "folder/" : format("workplace%d/", workplace);
}

std::string snapshotFileOf(int workplace, MacroNumber number) {
  return snapshotFolderOf(workplace) + macroFileName(number.text());
}

std::string utcText(std::chrono::sys_seconds time) {
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  return format("%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
}

std::span<const Snapshot::Macro> Snapshot::of(int workplace) const {
  return {std::ranges::lower_bound(macros, workplace, {}, &Macro::workplace),
          std::ranges::upper_bound(macros, workplace, {}, &Macro::workplace)};
}

Expected<std::string> packSnapshot(const Snapshot& snapshot) {
  const auto manifest = manifestOf(snapshot);
  if (!manifest) return manifest.failure();
  std::vector<ZipFile> files{{kManifest, manifest->text()}};
  for (const Snapshot::Macro& macro : snapshot.macros)
    files.push_back({snapshotFileOf(macro.workplace, macro.number), macro.bytes});
  auto archive = packZip(files, snapshot.time);
  if (archive && archive->size() > kLargestFile)
    return Failure{Failure::Kind::kTooLarge, "would be larger than the 256 MB that a snapshot may have"};
  return archive;
}

Expected<Snapshot> unpackSnapshot(std::string_view archive, const std::function<bool()>& wanted) {
  auto unpacked = unpackZip(archive, kMostFiles);
  if (!unpacked) return unpacked.failure();
  std::map<std::string, std::string> files;
  for (ZipFile& file : *unpacked) files.emplace(std::move(file.name), std::move(file.bytes));
  const auto list = files.extract(kManifest);
  if (list.empty()) return refused("is no snapshot: it holds no list (manifest.json)");
  const auto manifest = SnapshotManifest::read(list.mapped());
  if (!manifest) return manifest.failure();
  Snapshot snapshot{manifest->origin, manifest->time, manifest->workplaces, {}};
  for (const SnapshotManifest::Row& row : manifest->rows) {
    if (wanted && !wanted()) return Failure{Failure::Kind::kCancelled, {}};
    auto macro = takeMacro(row, files);
    if (!macro) return macro.failure();
    snapshot.macros.push_back(*std::move(macro));
  }
  if (!files.empty()) return strangeFile(files.begin()->first);
  return snapshot;
}

Outcome saveSnapshot(const SiteRoot& root, std::string_view path, const Snapshot& snapshot) {
  const auto archive = packSnapshot(snapshot);
  if (!archive) return archive.failure();
  // Nothing is put in the place of an old one that could not be read again.
  if (const auto whole = unpackSnapshot(*archive); !whole) return whole.failure();
  const Outcome written = writeFile(root, path, *archive);
  if (!written.written()) return written;
  const auto again = readFile(root, path);
  if (!again)
    return Failure{again.failure().kind,
                   "was written, but cannot be compared with what was to be: it " + again.failure().text};
  if (*again != *archive)
    return refused("was written, but reads as something else: the disk cannot be relied on");
  return written;
}

Expected<Snapshot> openSnapshot(const SiteRoot& root, std::string_view path,
                                const std::function<bool()>& wanted) {
  const auto archive = readFile(root, path);
  if (!archive) return archive.failure();
  return unpackSnapshot(*archive, wanted);
}

}  // namespace tessaly
