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
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/Workplace.h"
#include "review/DiskShelf.h"
#include "review/MacroBatch.h"
#include "review/SnapshotTaking.h"

namespace tessaly {
namespace {

constexpr int kTries = 4;                          // of a macro that a panel does not take
constexpr std::chrono::milliseconds kPause{1000};  // between two tries
const std::string kAsBefore = "as before: ";
const std::string kUnknown = "unknown: ";
constexpr const char* kNoStream = "a snapshot is a file, not a stream";

int take(CommandSession& session, SnapshotTaking& taking, const std::string& file) {
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  const auto snapshot = taking.take(now, [](const SnapshotTaking::Progress&) {});
  if (!snapshot) return session.failed(snapshot.failure().text);
  const std::string path = sitePathOf(file);
  if (const Outcome saved = saveSnapshot(session.root(), path, *snapshot); !saved) {
    const int code = session.failed(path + ' ' + saved.failure().text);
    if (!saved.written()) return code;
  }
  for (const int workplace : snapshot->workplaces) {
    const std::string where = workplace == Snapshot::kFolder ? "folder" : format("workplace %d", workplace);
    session.field(where, std::to_string(snapshot->of(workplace).size()) + " macros");
  }
  return kExitDone;
}

// What of a snapshot goes where.
struct RestoreItem {
  const Snapshot::Macro* macro;
  int workplace;  // that it goes to
  MacroPlace place = {};
  Expected<std::string> standing = std::string();

  [[nodiscard]] bool same() const { return standing == macro->bytes; }
  [[nodiscard]] bool missing() const {
    return !standing && standing.failure().kind == Failure::Kind::kMissing;
  }
};

// Puts macros of a snapshot back, row by row.
class Restoring {
 public:
  // The shelf of a workplace; null while it cannot be reached.
  using ShelfOf = std::function<MacroShelf*(int workplace)>;

  Restoring(CommandSession& session, ShelfOf shelfOf) : session_(session), shelfOf_(std::move(shelfOf)) {}

  // Looks at what stands there, and writes what is another unless it is only to be told.
  int run(std::vector<RestoreItem> items, RestoreHow how) {
    items_ = std::move(items);
    for (RestoreItem& item : items_) {
      MacroShelf* const shelf = shelfOf_(item.workplace);
      if (shelf == nullptr) return session_.failed("the panel cannot be reached");
      item.place = shelf->place(item.macro->number);
      item.standing = shelf->read(item.macro->number);
    }
    return how.dryRun ? tell() : write(how.force);
  }

 private:
  void row(const RestoreItem& item, const std::string& state) {
    const std::string where = item.workplace == Snapshot::kFolder ? "" : std::to_string(item.workplace) + ' ';
    session_.line(where + item.macro->number.text() + " - " + outputName(item.macro->name) + '\t' + state);
  }

  int tell() {
    bool known = true;
    for (const RestoreItem& item : items_) {
      const bool read = item.standing || item.missing();
      row(item, item.same()      ? "same"
                : item.missing() ? "new"
                : read           ? "changed"
                                 : kUnknown + item.standing.failure().text);
      known = known && read;
    }
    return known ? kExitDone : kExitFailed;
  }

  int write(bool force) {
    std::vector<const RestoreItem*> written;
    std::vector<BatchItem> batchItems;
    for (const RestoreItem& item : items_) {
      if (item.same()) {
        row(item, "same");
        continue;
      }
      const Outcome macro = force ? Outcome() : readsAsMacro(item.macro->bytes);
      if (!macro) {
        row(item, kAsBefore + ("it is no macro: " + macro.failure().text));
        code_ = kExitFailed;
        continue;
      }
      written.push_back(&item);
      batchItems.push_back({item.place, item.macro->bytes, HeldContent::asRead(item.standing)});
    }
    if (written.empty()) return code_;
    BatchPlaces places(session_.root(), session_.history(),
                       [this](const MacroPlace& place) { return shelfOf_(place.workplace); });
    MacroBatch batch(places, "restore of " + std::to_string(written.size()) + " macros",
                     MacroChange::kPutBack, MacroBatch::Mode::kAsManyAsGo, std::move(batchItems));
    return run(batch, written);
  }

  // Those that failed are tried again: a line that was lost may stand again.
  int run(MacroBatch& batch, const std::vector<const RestoreItem*>& written) {
    for (int tries = 0; tries < kTries; ++tries) {
      if (tries > 0) std::this_thread::sleep_for(kPause);
      const Outcome ran = batch.run([&](std::size_t index, const MacroBatch::Row& done) {
        if (done.done())
          row(*written[index],
              done.state == MacroBatch::Row::State::kUnverified ? "restored, not verified" : "restored");
        if (done.done() && !done.note.empty()) session_.warn(done.note);
      });
      if (!ran) return session_.failed(ran.failure().text);
      const auto again = [](const MacroBatch::Row& row) {
        return !row.done() && row.why.kind == Failure::Kind::kPanel;
      };
      if (std::none_of(batch.rows().begin(), batch.rows().end(), again)) break;
    }
    return judge(batch, written);
  }

  int judge(const MacroBatch& batch, const std::vector<const RestoreItem*>& written) {
    for (std::size_t i = 0; i < written.size(); ++i) {
      const MacroBatch::Row& now = batch.rows()[i];
      if (now.done()) continue;
      const bool unknown = now.state == MacroBatch::Row::State::kUnknown;
      row(*written[i], (unknown ? kUnknown : kAsBefore) + now.why.text);
      code_ = std::max(code_, unknown ? kExitUnknown : kExitFailed);
    }
    if (code_ != kExitDone) session_.warn("not every macro was restored");
    return code_;
  }

  CommandSession& session_;
  ShelfOf shelfOf_;
  std::vector<RestoreItem> items_;
  int code_ = kExitDone;
};

std::optional<Snapshot> opened(CommandSession& session, const std::string& file) {
  const std::string path = sitePathOf(file);
  auto snapshot = openSnapshot(session.root(), path);
  if (snapshot) return *std::move(snapshot);
  static_cast<void>(session.failed(path + ' ' + snapshot.failure().text));
  return std::nullopt;
}

// The numbers of one workplace in the snapshot, all without a word. Nothing when one is not there.
std::optional<std::vector<RestoreItem>> chosen(CommandSession& session, const Snapshot& snapshot, int from,
                                               int to, const std::vector<int>& numbers) {
  std::vector<RestoreItem> items;
  const auto macros = snapshot.of(from);
  for (const int number : numbers) {
    const auto found = std::ranges::find_if(
        macros, [number](const Snapshot::Macro& macro) { return macro.number.value() == number; });
    if (found == macros.end()) {
      static_cast<void>(
          session.failed("the snapshot has no macro " + MacroNumber::textOf(number) + " there"));
      return std::nullopt;
    }
    items.push_back({&*found, to});
  }
  if (!numbers.empty()) return items;
  for (const Snapshot::Macro& macro : macros) items.push_back({&macro, to});
  return items;
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
  std::vector<RestoreItem> items;
  if (workplace > 0) {
    const auto some = chosen(session, *snapshot, isOfFolder(*snapshot) ? Snapshot::kFolder : workplace,
                             workplace, *numbers);
    if (!some) return kExitFailed;
    items = *some;
  } else if (isOfFolder(*snapshot)) {
    return session.wrongUsage("a folder's macros need the workplace that they are to go to");
  } else {
    for (const Snapshot::Macro& macro : snapshot->macros) items.push_back({&macro, macro.workplace});
  }
  PanelShelves shelves(session.root(), session.history(), place);
  if (!shelves.open()) return session.failed("cannot connect to the panel at " + place.control());
  return Restoring(session, [&](int to) { return shelves.shelf(to); }).run(std::move(items), how);
}

int runSnapshot(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
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
  auto items = chosen(session, *snapshot, workplace.value_or(Snapshot::kFolder), Snapshot::kFolder, *numbers);
  if (!items) return kExitFailed;
  DiskShelf shelf(session.root(), session.history(), folder);
  return Restoring(session, [&](int) { return &shelf; })
      .run(*std::move(items), {.dryRun = dryRun, .force = true});
}

}  // namespace tessaly
