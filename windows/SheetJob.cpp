#include "windows/SheetJob.h"

#include <QCoreApplication>

#include "review/SheetReading.h"
#include "windows/FindingText.h"
#include "windows/ReviewWalk.h"

namespace tessaly {

namespace {

std::string translated(const char* text) {
  return QCoreApplication::translate("SheetWords", text).toStdString();
}

SheetMacro placed(const ReviewedPlace& place) {
  return {SheetReading::placeText(place.place), place.number, place.name};
}

SheetMacro placed(const OpenContent& open) {
  SheetMacro macro = placed(open.place);
  macro.unsaved = open.unsaved;
  return macro;
}

// What the sheet is called, as the command-line twin calls it.
std::string titleOf(const ReviewScope& scope, const Sheet& sheet) {
  if (const auto* folder = std::get_if<FolderContent>(&scope.what)) return folder->path;
  if (sheet.macros.empty()) return scope.title.toStdString();
  return std::holds_alternative<OpenContent>(scope.what) ? sheet.macros.front().title()
                                                         : sheet.macros.front().place;
}

}  // namespace

SheetWords sheetWords() {
  SheetWords words;
  words.language = QCoreApplication::translate("SheetWords", "en", "the code of this language").toStdString();
  words.macros = translated(QT_TRANSLATE_NOOP("SheetWords", "Macros"));
  words.number = translated(QT_TRANSLATE_NOOP("SheetWords", "Number"));
  words.name = translated(QT_TRANSLATE_NOOP("SheetWords", "Name"));
  words.pageColumn = translated(QT_TRANSLATE_NOOP("SheetWords", "Page"));
  words.command = translated(QT_TRANSLATE_NOOP("SheetWords", "Command"));
  words.value = translated(QT_TRANSLATE_NOOP("SheetWords", "Value"));
  words.empty = translated(QT_TRANSLATE_NOOP("SheetWords", "empty macro"));
  words.none = translated(QT_TRANSLATE_NOOP("SheetWords", "no macros"));
  words.unread = translated(QT_TRANSLATE_NOOP("SheetWords", "cannot be read (%1)"));
  words.unsaved = translated(QT_TRANSLATE_NOOP("SheetWords", "%1 (unsaved changes)"));
  words.findings = translated(QT_TRANSLATE_NOOP("SheetWords", "Findings"));
  words.after = translated(QT_TRANSLATE_NOOP("SheetWords", "After this macro"));
  words.notes = translated(QT_TRANSLATE_NOOP("SheetWords", "Notes"));
  words.nothing = translated(QT_TRANSLATE_NOOP("SheetWords", "no value that could be told is changed"));
  words.unknown = translated(QT_TRANSLATE_NOOP("SheetWords", "unknown"));
  words.changed = translated(QT_TRANSLATE_NOOP("SheetWords", "changed by %1"));
  words.untold = translated(
      QT_TRANSLATE_NOOP("SheetWords", "What these commands do, or a part of it, cannot be told: %1"));
  words.continued = translated(QT_TRANSLATE_NOOP("SheetWords", "%1 (continued)"));
  words.page = translated(QT_TRANSLATE_NOOP("SheetWords", "page %1 of %2"));
  words.finding = [](const Finding& finding) { return findingText(finding).toStdString(); };
  return words;
}

Outcome readSheet(const SiteRoot& root, const ReviewScope& scope, const CheckContext& context,
                  const SheetOptions& options, ReviewWork<MadeSheet>::Report& report) {
  SheetReading reading(context, sheetWords());
  const auto sheet = std::make_shared<Sheet>();
  sheet->ofMany = !std::holds_alternative<OpenContent>(scope.what);
  const Outcome walked = walkScope(
      root, scope,
      {.open =
           [&](const OpenContent& open) {
             sheet->macros.push_back(std::visit(
                 [&](const auto& content) { return reading.read(placed(open), content); }, open.content));
           },
       .folder = [&] { reading.beginFolder(); },
       .stored =
           [&](const ReviewedPlace& place, const std::string& file, Expected<std::string> bytes) {
             sheet->macros.push_back(reading.read(placed(place), file, std::move(bytes)));
           },
       .progress = [&](std::size_t done, std::size_t of) { report.progress(done, of); }},
      report.stop());
  if (!walked) return walked;
  sheet->title = titleOf(scope, *sheet);
  return layOutSheet(sheet, options, report);
}

Outcome layOutSheet(std::shared_ptr<const Sheet> sheet, const SheetOptions& options,
                    ReviewWork<MadeSheet>::Report& report) {
  auto pages = layOut(*sheet, options, sheetWords());
  if (!pages) return pages.failure();
  report.add({std::move(sheet), std::make_shared<const SheetPages>(*std::move(pages)), options});
  return {};
}

}  // namespace tessaly
