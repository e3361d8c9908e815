#include <chrono>
#include <optional>

#include "cli/Commands.h"
#include "cli/FindingOutput.h"
#include "platform/Files.h"
#include "platform/LocalTime.h"
#include "platform/Text.h"
#include "review/SheetReading.h"

namespace tessaly {
namespace {

constexpr std::string_view kToOutput = "-";

std::optional<std::chrono::year_month_day> today() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const std::string text = localTimeText(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
  return dateNamed(std::string_view(text).substr(0, text.find(' ')));
}

// Puts the macros of the paths on one sheet.
class SheetPaths {
 public:
  SheetPaths(CommandSession& session, SheetReading& reading) : session_(session), reading_(reading) {}

  // False when the path cannot be read at all; the reason is told.
  bool add(const std::string& word) {
    const std::string path = sitePathOf(word);
    if (word != kToOutput && isFolder(session_.root(), path)) {
      call(displayUtf8(path), true);
      for (const MacroFolder& folder : macroFoldersUnder(session_.root(), path)) {
        reading_.beginFolder();
        for (const std::string& file : folder.files) read(file, file);
      }
      return true;
    }
    return session_.readFrom(word, [&](const FileOperand& file) {
      if (!canOpen(session_.root(), file.path())) {
        const auto bytes = readFile(session_.root(), file.path());
        return session_.failed(file.shown() + ' ' + (bytes ? std::string() : bytes.failure().text));
      }
      read(file.path(), file.isStream() ? std::string() : file.path());
      call(sheet_.macros.back().title().empty() ? displayUtf8(file.shown()) : sheet_.macros.back().title(),
           false);
      return kExitDone;
    }) == kExitDone;
  }

  [[nodiscard]] const Sheet& sheet() const { return sheet_; }
  // A macro on the sheet cannot be read.
  [[nodiscard]] bool unread() const { return unread_; }

 private:
  void call(const std::string& title, bool ofMany) {
    sheet_.ofMany = sheet_.ofMany || ofMany || !sheet_.title.empty();
    sheet_.title += (sheet_.title.empty() ? "" : ", ") + title;
  }

  // `place` is the path that the macro counts as lying at; empty for none.
  void read(const std::string& file, const std::string& place) {
    SheetMacro at{SheetReading::placeText({place, {}, 0, {}}), SheetReading::numberOf(place), {}};
    sheet_.macros.push_back(reading_.read(std::move(at), file, readFile(session_.root(), file)));
    const SheetMacro& macro = sheet_.macros.back();
    if (macro.unread.empty()) return;
    unread_ = true;
    session_.warn((place.empty() ? std::string(kToOutput) : place) + ' ' + macro.unread);
  }

  CommandSession& session_;
  SheetReading& reading_;
  Sheet sheet_;
  bool unread_ = false;
};

}  // namespace

int runSheet(CommandSession& session, Arguments& arguments) {
  constexpr std::size_t kMostPaths = 100'000;
  const std::string format = arguments.option("--format").value_or("");
  const std::string paper = arguments.option("--paper").value_or(std::string(nameOf(Paper::kA4)));
  const auto given = arguments.option("--date");
  const std::string output = arguments.option("--output").value_or(std::string(kToOutput));
  if (!arguments.complete(1, kMostPaths)) return session.wrongUsage(arguments.problem());
  const auto wanted = sheetFormatNamed(format);
  if (!wanted) return session.wrongUsage("--format is pdf, html or csv");
  const auto size = paperNamed(paper);
  if (!size) return session.wrongUsage("--paper is a4, a5 or letter");
  const auto date = given ? dateNamed(*given) : today();
  if (!date) return session.wrongUsage("--date is a day, as 2026-11-25");
  const SheetWords words;
  SheetReading reading(checkContextOf(session), words);
  SheetPaths paths(session, reading);
  for (std::size_t i = 0; i < arguments.size(); ++i)
    if (!paths.add(arguments[i])) return kExitFailed;
  const auto bytes = writeSheet(paths.sheet(), {.paper = *size, .date = *date}, words, *wanted);
  if (!bytes) return session.failed(bytes.failure().text);
  const auto file = FileOperand::open(session.root(), session.streams(), output, FileUse::kWrite);
  if (!file) return session.failed(output + ' ' + file.failure().text);
  if (const Outcome written = writeFile(session.root(), file->path(), *bytes); !written)
    return session.failed(file->shown() + ' ' + written.failure().text);
  if (const Outcome out = file->deliver(session.root(), session.streams()); !out)
    return session.failed(output + ' ' + out.failure().text);
  return paths.unread() || !session.dictionaryWhole() ? kExitFailed : kExitDone;
}

}  // namespace tessaly
