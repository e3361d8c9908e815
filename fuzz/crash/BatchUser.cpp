#include "fuzz/crash/BatchUser.h"

#include <algorithm>
#include <memory>
#include <numeric>

#include "fuzz/crash/CrashSite.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "review/BatchRecovery.h"
#include "review/DiskShelf.h"
#include "review/MacroBatch.h"
#include "review/SnapshotRestore.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr int kFiles = 5;
constexpr int kWorkplace = 2;
constexpr std::size_t kMostKept = 200;
constexpr const char* kSnapshot = "taken.zip";
constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Show\\CP1\\macroWP5\\";

// A panel whose names nobody asks for: what it is told to do it takes.
class Listening final : public PanelTransport {
 public:
  bool connect(const std::string&, std::uint16_t, IXCTLClient* client) override {
    client->connectionStatusChanged(kPanelConnected);
    return true;
  }
  void disconnect() override {}
  bool subscribe(const std::string&) override { return true; }
  bool callFunctionId(const std::string&, const ParameterList&) override { return true; }
};

MacroHistory::Limits limits() {
  MacroHistory::Limits limits;
  limits.macros = kMostKept;
  return limits;
}

std::string diskFile(int number) { return kFolder + macroFileName(MacroNumber::textOf(number)); }

std::string panelFile(const fs::path& folder, int number) {
  return (folder / "panel").string() + remoteMacroPath(kWorkplace, MacroNumber::textOf(number));
}

// Of very different sizes, so that uploads are cut anywhere.
std::string content(int number, int generation) { return crashMacro(generation, 10 << (2 * number)); }

// The generation of all of them, if there is one.
template <typename Read>
std::optional<int> commonGeneration(const Read& read) {
  std::optional<int> common;
  for (int number = 0; number < kFiles; ++number) {
    const std::string bytes = read(number);
    const std::size_t name = bytes.find("\"K");
    const int generation = name == bytes.npos ? -1 : parseInt(std::string_view(bytes).substr(name + 2));
    if (bytes != content(number, generation) || (common && *common != generation)) return std::nullopt;
    common = generation;
  }
  return common;
}

}  // namespace

CrashBatchUser::CrashBatchUser(const fs::path& folder, std::uint16_t ftpPort)
    : root_(folder / "batches"),
      macros_(folder / "site"),
      history_(root_, limits()),
      client_(std::make_unique<Listening>()),
      panel_(client_, root_, ftpTransfers(ftpPort, FtpClient::Connections::kKept), &readsAsMacro),
      places_(root_, history_, [this](const MacroPlace&) { return shelf_.get(); }) {
  panel_.keepIn(history_);
  panel_.stayConnected();
  if (client_.connect("127.0.0.1"))
    shelf_ = std::make_unique<PanelShelf>(panel_, client_, history_, "127.0.0.1", kWorkplace);
}

CrashBatchUser::~CrashBatchUser() = default;

bool CrashBatchUser::writeBatch(int generation) {
  std::vector<BatchItem> items;
  for (int number = 0; number < kFiles; ++number) {
    items.push_back({{macros_.resolve(diskFile(number)).string(), {}, 0, {}}, content(number, generation)});
    if (generation % 2 == 0) continue;
    items.push_back(
        {{{}, "127.0.0.1", kWorkplace, MacroNumber::textOf(number)}, content(number, generation)});
  }
  const auto mode = generation % 2 == 0 ? MacroBatch::Mode::kAllOrNone : MacroBatch::Mode::kAsManyAsGo;
  MacroBatch batch(places_, "crash", MacroChange::kEdit, mode, std::move(items));
  return batch.run() && batch.doneCount() == batch.rows().size() &&
         std::ranges::all_of(batch.rows(), [](const MacroBatch::Row& row) { return row.note.empty(); });
}

bool CrashBatchUser::restore(int generation) {
  Snapshot taken{{"127.0.0.1", {}}, {}, {kWorkplace}, {}};
  for (int number = 0; number < kFiles; ++number)
    taken.macros.push_back({kWorkplace, *MacroNumber::of(number), "K", content(number, generation)});
  if (!saveSnapshot(root_, kSnapshot, taken).written()) return false;
  auto snapshot = openSnapshot(root_, kSnapshot);
  if (!snapshot) return false;
  DiskShelf disk(root_, history_, macros_.resolve(kFolder).string());
  const auto shelfOf = [&](int workplace) -> MacroShelf* {
    if (workplace == Snapshot::kFolder) return &disk;
    return shelf_.get();
  };
  SnapshotRestore restore(std::make_shared<const Snapshot>(*std::move(snapshot)), root_, history_, shelfOf,
                          {});
  std::vector<std::size_t> rows(std::size_t{2} * kFiles);
  std::iota(rows.begin(), rows.end(), 0);
  const auto quiet = [](std::size_t) {};
  return restore.add(kWorkplace, Snapshot::kFolder) && restore.add(kWorkplace, kWorkplace) &&
         restore.look(quiet) && restore.write(rows, quiet) &&
         std::ranges::all_of(restore.rows(), [](const RestoreRow& row) {
           return row.note.empty() &&
                  (row.state == RestoreRow::State::kRestored || row.state == RestoreRow::State::kSame);
         });
}

bool CrashBatchUser::recover() {
  return std::ranges::all_of(recoverBatches(places_), [](const BatchRecovery& told) {
    return told.how == BatchRecovery::How::kEnded && told.failed.empty() && told.letAlone.empty();
  });
}

bool CrashBatchUser::isOurs(const std::string& path) {
  for (int number = 0; number < kFiles; ++number)
    if (equalNoCase(path, diskFile(number))) return true;
  return false;
}

bool CrashBatchUser::prepare(const fs::path& folder) {
  const SiteRoot macros(folder / "site");
  bool done = makeFolder(folder / "batches") && makeFolder(macros, kFolder) &&
              makeFolder(fs::path(panelFile(folder, 0)).parent_path());
  for (int number = 0; number < kFiles; ++number)
    done = done && writeFile(macros, diskFile(number), content(number, 0)) &&
           writeFile(macros, panelFile(folder, number), content(number, 0));
  return done;
}

std::optional<int> CrashBatchUser::generation(const fs::path& folder) {
  const SiteRoot macros(folder / "site");
  const auto onDisk =
      commonGeneration([&](int number) { return readFile(macros, diskFile(number)).value_or(""); });
  const auto onPanel =
      commonGeneration([&](int number) { return readFile(macros, panelFile(folder, number)).value_or(""); });
  const SiteRoot batches(folder / "batches");
  const auto snapshot = openSnapshot(batches, kSnapshot);
  if (!snapshot && snapshot.failure().kind != Failure::Kind::kMissing) return std::nullopt;
  if (!onDisk || !onPanel || (*onDisk % 2 != 0 && *onDisk != *onPanel)) return std::nullopt;
  return onDisk;
}

}  // namespace tessaly
