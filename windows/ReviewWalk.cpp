#include "windows/ReviewWalk.h"

#include "platform/Files.h"
#include "platform/Text.h"
#include "review/MacroFiles.h"

namespace tessaly {
namespace {

constexpr std::string_view kKeyFileStart = "key";
constexpr std::size_t kKeyNumberSize = 2;

Outcome endOf(const std::stop_token& stop) {
  return stop.stop_requested() ? Outcome(Failure{Failure::Kind::kCancelled, "cancelled"}) : Outcome();
}

std::string numberOf(std::string_view file) {
  if (const auto number = MacroNumber::ofFile(file)) return number->text();
  return file.starts_with(kKeyFileStart) ? std::string(file.substr(kKeyFileStart.size(), kKeyNumberSize))
                                         : std::string();
}

// Below `folder`, which ends in a separator or not.
std::string_view below(std::string_view folder, std::string_view path) {
  if (!path.starts_with(folder)) return path;
  path.remove_prefix(folder.size());
  return path.substr(std::min(path.find_first_not_of("\\/"), path.size()));
}

Outcome walkFolder(const SiteRoot& root, const std::string& path, const ReviewTaker& taker,
                   const std::stop_token& stop) {
  const std::vector<MacroFolder> folders = macroFoldersUnder(root, path);
  std::size_t count = 0, done = 0;
  for (const MacroFolder& folder : folders) count += folder.files.size();
  taker.progress(0, count);
  for (const MacroFolder& folder : folders) {
    taker.folder();
    for (const std::string& file : folder.files) {
      if (stop.stop_requested()) return endOf(stop);
      taker.stored({.place = {file, {}, 0, {}},
                    .shown = std::string(below(path, file)),
                    .number = numberOf(fileNameOf(file)),
                    .name = {}},
                   file, readFile(root, file));
      taker.progress(++done, count);
    }
  }
  return {};
}

Outcome walkShelf(const ShelfContent& content, const ReviewTaker& taker, const std::stop_token& stop) {
  const std::shared_ptr<MacroShelf> shelf = content.open();
  const std::stop_callback cancel(stop, [&shelf] { shelf->cancel(); });
  const auto held = shelf->list();
  if (!held) return stop.stop_requested() ? endOf(stop) : Outcome(held.failure());
  taker.folder();
  std::size_t done = 0;
  for (const MacroShelf::Held& macro : *held) {
    auto bytes = shelf->read(macro.number);  // fails at once after a cancel
    if (stop.stop_requested()) return endOf(stop);
    const bool none = !bytes && bytes.failure().kind == Failure::Kind::kMissing && macro.name.empty();
    if (none) continue;
    taker.stored({.place = shelf->place(macro.number),
                  .shown = shelf->title(),
                  .number = macro.number.text(),
                  .name = macro.name},
                 macroFileName(macro.number.text()), std::move(bytes));
    taker.progress(++done, held->size());
  }
  return {};
}

}  // namespace

Outcome walkScope(const SiteRoot& root, const ReviewScope& scope, const ReviewTaker& taker,
                  const std::stop_token& stop) {
  if (const auto* open = std::get_if<OpenContent>(&scope.what)) {
    taker.open(*open);
    taker.progress(1, 1);
    return {};
  }
  if (const auto* folder = std::get_if<FolderContent>(&scope.what))
    return walkFolder(root, folder->path, taker, stop);
  return walkShelf(std::get<ShelfContent>(scope.what), taker, stop);
}

}  // namespace tessaly
