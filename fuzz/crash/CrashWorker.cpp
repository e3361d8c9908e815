#include "fuzz/crash/CrashWorker.h"

#include <chrono>
#include <random>

#include "app/WorkingCopy.h"
#include "link/PanelMacros.h"
#include "model/Settings.h"
#include "platform/Files.h"

namespace tessaly {
namespace {

using Clock = std::chrono::steady_clock;

class CrashWorker {
 public:
  CrashWorker(const std::filesystem::path& folder, CrashRecord& record, std::uint16_t ftpPort)
      : site_(folder),
        record_(record),
        transfers_(ftpTransfers(ftpPort)),
        copy_({site_.root(), messages_}, CrashSite::path(CrashStep::kEdit)) {
    const std::string saved = CrashSite::path(CrashStep::kSave);
    MacroTarget target;
    target.folder = saved.substr(0, saved.find_last_of('\\') + 1);
    target.numberText = "001";
    ready_ = copy_.open(target, true);
  }

  bool run(CrashStep step) {
    record_.pending = pendingGeneration(step);
    record_.step = static_cast<int>(step);
    ++record_.started;
    const auto begin = Clock::now();
    const bool done = ready_ && work(step, record_.pending);
    const auto took = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin);
    if (done) record_.committed.at(static_cast<std::size_t>(step)) = record_.pending.load();
    record_.step = CrashRecord::kBetweenSteps;
    auto& average = record_.microseconds.at(static_cast<std::size_t>(step));
    average = average == 0 ? took.count() : (7 * average + took.count()) / 8;
    return done;
  }

 private:
  [[nodiscard]] int committed(CrashStep step) const {
    return record_.committed.at(static_cast<std::size_t>(step));
  }

  [[nodiscard]] int pendingGeneration(CrashStep step) {
    switch (step) {
      case CrashStep::kSave:
        return committed(CrashStep::kEdit);
      case CrashStep::kCopy:
        return committed(CrashStep::kSave);
      case CrashStep::kDownload:
        return (committed(step) + 1) % kCrashDownloads;
      case CrashStep::kEdit:
      case CrashStep::kConvert:
      case CrashStep::kSettings:
        break;
    }
    return ++record_.generation;
  }

  bool work(CrashStep step, int generation) {
    const SiteAccess site{site_.root(), messages_};
    const std::string file = CrashSite::path(step);
    switch (step) {
      case CrashStep::kEdit:
        return update(crashValue(generation));
      case CrashStep::kSave:
        return copy_.saveToDisk();
      case CrashStep::kCopy:
        return copyFile(site_.root(), CrashSite::path(CrashStep::kSave), file);
      case CrashStep::kConvert:
        return convertKeyFile(site, crashMacroName(generation), file, CrashSite::keyPath());
      case CrashStep::kDownload:
        return transfers_("127.0.0.1")
                   ->get(remoteMacroPath(1, macroNumberText(generation)),
                         site_.root().resolve(file).string()) == FtpClient::Result::kDone;
      case CrashStep::kSettings: {
        const std::string text = crashValue(generation);
        return writeSettings(site_.root(), {generation, kFrameRate50Hz, text, text, text, text});
      }
    }
    return false;
  }

  // As the value update of pane A does it.
  bool update(const std::string& value) {
    if (!copy_.hold()) return false;
    for (int command = 0; command < kCrashCommands; ++command) {
      if (!copy_.setHeldValue(command, value)) return false;
    }
    return copy_.saveHeld();
  }

  CrashSite site_;
  CrashRecord& record_;
  CrashMessages messages_;
  MacroTransferFactory transfers_;
  WorkingCopy copy_;
  bool ready_ = false;
};

}  // namespace

bool runCrashWorker(const std::filesystem::path& folder, CrashRecord& record, std::uint16_t ftpPort,
                    unsigned seed, int steps) {
  std::mt19937 random(seed);
  CrashWorker worker(folder, record, ftpPort);
  for (int i = 0; i < steps; ++i) {
    // The first round does everything once, so that every step is known by its time.
    const auto first = static_cast<unsigned>(i) + seed;
    const unsigned chosen =
        i < static_cast<int>(kCrashSteps.size()) ? first : static_cast<unsigned>(random());
    if (!worker.run(static_cast<CrashStep>(chosen % kCrashSteps.size()))) ++record.failed;
  }
  return record.failed == 0;
}

}  // namespace tessaly
