#include "cli/SnapshotCommands.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdint>
#include <functional>
#include <memory>
#include <numeric>
#include <thread>
#include <utility>

#include "cli/Commands.h"
#include "cli/PanelShelves.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/Workplace.h"
#include "review/DiskShelf.h"
#include "review/SnapshotRestore.h"
#include "review/SnapshotTaking.h"

namespace tessaly {
namespace {

constexpr const char* kNoStream = "a snapshot is a file, not a stream";

int take(CommandSession& session, SnapshotTaking& taking, const std::string& file) {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  const auto snapshot = taking.take(now, [](const SnapshotTaking::Progress&) {});
  if (!snapshot) return session.failed(snapshot.failure().text);
  const std::string path = sitePathOf(file);
  const Outcome saved = saveSnapshot(session.root(), path, *snapshot);
  if (!saved.written()) return session.failed(path + ' ' + saved.failure().text);
  if (!saved) session.warn(path + ' ' + saved.failure().text);
  for (const int workplace : snapshot->workplaces) {
    const std::string where = workplace == Snapshot::kFolder ? "folder" : format("workplace %d", workplace);
    session.field(where, std::to_string(snapshot->of(workplace).size()) + " macros");
  }
  return saved ? kExitDone : kExitFailed;
}

// "2 007 - Name<tab>restored"; without a workplace for a folder.
void printRow(CommandSession& session, const RestoreRow& row) {
  using State = RestoreRow::State;
  const auto text = [&]() -> std::string {
    switch (row.state) {
      case State::kNotLooked:
        return "not looked at";
      case State::kSame:
        return "same";
      case State::kNew:
        return "new";
      case State::kChanged:
        return "changed";
      case State::kUnread:
      case State::kUnknown:
        return "unknown: " + row.why.text;
      case State::kRestored:
        return "restored";
      case State::kUnverified:
        return "restored, not verified";
      case State::kAsBefore:
        return "as before: " + row.why.text;
    }
    return {};
  };
  const std::string where = row.workplace == Snapshot::kFolder ? "" : std::to_string(row.workplace) + ' ';
  session.line(where + row.macro->number.text() + " - " + outputName(row.macro->name) + '\t' + text());
  if (!row.note.empty()) session.warn(row.note);
}

bool isUnflushed(const RestoreRow& row) { return row.why.kind == Failure::Kind::kUnflushed; }

// What became of a row.
int exitCodeOf(const RestoreRow& row) {
  using State = RestoreRow::State;
  if (row.state == State::kUnknown) return kExitUnknown;
  return row.state == State::kAsBefore || row.state == State::kUnread ? kExitFailed : kExitDone;
}

int worstOf(const std::vector<RestoreRow>& rows) {
  int code = kExitDone;
  for (const RestoreRow& row : rows) code = std::max(code, exitCodeOf(row));
  return code;
}

int end(CommandSession& session, const std::vector<RestoreRow>& rows) {
  const int code = worstOf(rows);
  if (code != kExitDone) session.warn("not every macro was restored");
  const auto unflushed = std::ranges::find_if(rows, isUnflushed);
  if (unflushed == rows.end()) return code;
  session.warn("what was restored " + unflushed->why.text);
  return std::max(code, kExitFailed);
}

// Looks at what stands there, and writes what is another unless it is only to be told.
int run(CommandSession& session, SnapshotRestore& restore, bool dryRun) {
  const auto print = [&](std::size_t i) { printRow(session, restore.rows()[i]); };
  std::vector<std::size_t> others;
  const Outcome looked = restore.look([&](std::size_t i) {
    if (dryRun || restore.rows()[i].state == RestoreRow::State::kSame)
      print(i);
    else
      others.push_back(i);
  });
  if (!looked) return session.failed(looked.failure().text);
  if (dryRun) return worstOf(restore.rows());
  if (const Outcome written = restore.write(others, print); !written)
    return session.failed(written.failure().text);
  return end(session, restore.rows());
}

std::shared_ptr<const Snapshot> opened(CommandSession& session, const std::string& file) {
  const std::string path = sitePathOf(file);
  auto snapshot = openSnapshot(session.root(), path);
  if (snapshot) return std::make_shared<const Snapshot>(*std::move(snapshot));
  static_cast<void>(session.failed(path + ' ' + snapshot.failure().text));
  return nullptr;
}

// Each once, in their order; nothing for a word that is no number of a macro.
std::optional<std::vector<int>> numbersOf(const std::vector<std::string>& words, std::size_t first) {
  std::vector<int> numbers;
  for (std::size_t i = first; i < words.size(); ++i) {
    const auto number = wholeNumber(words[i], 0, MacroNumber::kCount - 1);
    if (!number) return std::nullopt;
    if (std::find(numbers.begin(), numbers.end(), *number) == numbers.end()) numbers.push_back(*number);
  }
  return numbers;
}

bool isOfFolder(const Snapshot& snapshot) { return snapshot.origin.address.empty(); }

}  // namespace

int takePanelSnapshot(CommandSession& session, const PanelPlace& place, const std::string& file, bool force) {
  if (file == "-") return session.wrongUsage(kNoStream);
  PanelShelves shelves(session.root(), session.history(), place);
  if (!shelves.open()) return session.failed("cannot connect to the panel at " + place.control());
  std::vector<int> workplaces(Workplace::kCount);
  std::iota(workplaces.begin(), workplaces.end(), 1);
  SnapshotTaking taking({place.address, {}}, workplaces,
                        [&](int workplace) { return shelves.make(workplace); }, {.onlyMacros = !force});
  return take(session, taking, file);
}

int restoreToPanel(CommandSession& session, const PanelPlace& place, const std::string& file,
                   const std::vector<std::string>& words, RestoreHow how) {
  const int workplace = words.empty() ? 0 : wholeNumber(words[0], 1, Workplace::kCount).value_or(0);
  if (!words.empty() && workplace == 0) return session.wrongUsage("a workplace is 1 to 8");
  const auto numbers = numbersOf(words, 1);
  if (!numbers) return session.wrongUsage("a macro number is 0 to 999");
  const auto snapshot = opened(session, file);
  if (!snapshot) return kExitFailed;
  const bool there = workplace == 0 || isOfFolder(*snapshot) ||
                     std::ranges::find(snapshot->workplaces, workplace) != snapshot->workplaces.end();
  if (!there) return session.failed("the snapshot has no workplace " + std::to_string(workplace));
  if (workplace == 0 && isOfFolder(*snapshot))
    return session.wrongUsage("a folder's macros need the workplace that they are to go to");
  PanelShelves shelves(session.root(), session.history(), place);
  SnapshotRestore restore(snapshot, session.root(), session.history(),
                          [&](int to) { return shelves.shelf(to); }, {.anyBytes = how.force});
  for (const int from : snapshot->workplaces) {
    if (workplace > 0 && from != workplace && from != Snapshot::kFolder) continue;
    const int to = workplace > 0 ? workplace : from;
    if (const Outcome added = restore.add(from, to, *numbers); !added)
      return session.failed(added.failure().text);
  }
  if (!shelves.open()) return session.failed("cannot connect to the panel at " + place.control());
  return run(session, restore, how.dryRun);
}

// "2 007 - Name"; without a workplace for a folder.
int listSnapshot(CommandSession& session, const std::string& file) {
  const auto snapshot = opened(session, file);
  if (!snapshot) return kExitFailed;
  for (const int workplace : snapshot->workplaces)
    for (const Snapshot::Macro& macro : snapshot->of(workplace))
      session.line((workplace == Snapshot::kFolder ? "" : std::to_string(workplace) + ' ') +
                   macro.number.text() + " - " + outputName(macro.name));
  return kExitDone;
}

int runSnapshot(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(1, 2)) return session.wrongUsage(arguments.problem());
  if (arguments.size() == 1) return listSnapshot(session, arguments[0]);
  const std::string folder = sitePathOf(arguments[0]);
  if (arguments[1] == "-") return session.wrongUsage(kNoStream);
  if (!isFolder(session.root(), folder)) return session.failed(folder + " is no folder");
  SnapshotTaking taking(
      {{}, folder}, {Snapshot::kFolder},
      [&](int) { return std::make_unique<DiskShelf>(session.root(), session.history(), folder); }, {});
  return take(session, taking, arguments[1]);
}

int runRestore(CommandSession& session, Arguments& arguments) {
  const bool dryRun = arguments.flag("--dry-run");
  const auto given = arguments.option("--workplace");
  if (!arguments.complete(2, SIZE_MAX)) return session.wrongUsage(arguments.problem());
  const auto workplace = given ? wholeNumber(*given, 1, Workplace::kCount) : std::nullopt;
  if (given && !workplace) return session.wrongUsage("a workplace is 1 to 8");
  std::vector<std::string> words;
  for (std::size_t i = 2; i < arguments.size(); ++i) words.push_back(arguments[i]);
  const auto numbers = numbersOf(words, 0);
  if (!numbers) return session.wrongUsage("a macro number is 0 to 999");
  const auto snapshot = opened(session, arguments[0]);
  if (!snapshot) return kExitFailed;
  if (isOfFolder(*snapshot) == workplace.has_value())
    return session.wrongUsage(workplace ? "the snapshot is one of a folder, without workplaces"
                                        : "--workplace tells which of the panel's is to be restored");
  const std::string folder = sitePathOf(arguments[1]);
  if (!isFolder(session.root(), folder)) return session.failed(folder + " is no folder");
  DiskShelf shelf(session.root(), session.history(), folder);
  SnapshotRestore restore(snapshot, session.root(), session.history(), [&](int) { return &shelf; },
                          {.anyBytes = true});
  if (const Outcome added = restore.add(workplace.value_or(Snapshot::kFolder), Snapshot::kFolder, *numbers);
      !added)
    return session.failed(added.failure().text);
  return run(session, restore, dryRun);
}

}  // namespace tessaly
