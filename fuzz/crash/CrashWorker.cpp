#include "fuzz/crash/CrashWorker.h"

#include <chrono>
#include <random>

#include "fuzz/crash/BatchUser.h"
#include "fuzz/crash/StepsUser.h"
#include "link/PanelMacros.h"
#include "model/MacroFile.h"
#include "model/Settings.h"
#include "platform/Files.h"
#include "platform/MacroNumber.h"

namespace tessaly {
namespace {

using Clock = std::chrono::steady_clock;

class CrashWorker {
 public:
  CrashWorker(const std::filesystem::path& folder, CrashRecord& record, std::uint16_t ftpPort)
      : site_(folder), record_(record), batches_(folder, ftpPort), transfers_(ftpTransfers(ftpPort)) {}

  bool run(CrashStep step) {
    record_.pending = pendingGeneration(step);
    record_.step = static_cast<int>(step);
    ++record_.started;
    const auto begin = Clock::now();
    const bool done = work(step, record_.pending);
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
      case CrashStep::kSteps:
        return steps_.decide(++record_.generation);
      case CrashStep::kEdit:
      case CrashStep::kConvert:
      case CrashStep::kKeep:
      case CrashStep::kSettings:
      case CrashStep::kBatch:
        break;
    }
    return ++record_.generation;
  }

  bool work(CrashStep step, int generation) {
    const SiteAccess site{site_.root(), messages_};
    const std::string file = CrashSite::path(step);
    switch (step) {
      case CrashStep::kEdit:
        return update(site, file, crashValue(generation));
      case CrashStep::kSave:
        return copyFile(site_.root(), CrashSite::path(CrashStep::kEdit), file).done();
      case CrashStep::kCopy:
        return copyFile(site_.root(), CrashSite::path(CrashStep::kSave), file).done();
      case CrashStep::kConvert:
        return convertKeyFile(site, crashMacroName(generation), file, CrashSite::keyPath()).done();
      case CrashStep::kDownload:
        return download(remoteMacroPath(1, MacroNumber::textOf(generation)), file);
      case CrashStep::kKeep:
        return site_.keep(generation);
      case CrashStep::kSteps:
        return steps_.act();
      case CrashStep::kBatch:
        return batches_.write(generation);
      case CrashStep::kSettings: {
        const std::string text = crashValue(generation);
        return writeSettings(site_.root(), {generation, kFrameRate50Hz, text, text, text, text}).done();
      }
    }
    return false;
  }

  [[nodiscard]] bool download(const std::string& remote, const std::string& file) const {
    std::string bytes;
    return transfers_("127.0.0.1")->get(remote, bytes, FtpClient::kPatience) == FtpClient::Result::kDone &&
           writeFile(site_.root(), file, bytes).done();
  }

  // As the value update does it.
  static bool update(const SiteAccess& site, const std::string& file, const std::string& value) {
    SetValues values;
    for (int command = 0; command < kCrashCommands; ++command) values.values.emplace_back(command, value);
    return editMacroFile(site, file, values).done();
  }

  CrashSite site_;
  CrashRecord& record_;
  CrashMessages messages_;
  CrashStepsUser steps_{{site_.root(), messages_}};
  CrashBatchUser batches_;
  MacroTransferFactory transfers_;
};

}  // namespace

bool runCrashStep(const std::filesystem::path& folder, CrashRecord& record, std::uint16_t ftpPort,
                  CrashStep step) {
  return CrashWorker(folder, record, ftpPort).run(step);
}

bool runCrashWorker(const std::filesystem::path& folder, CrashRecord& record, std::uint16_t ftpPort,
                    unsigned seed, int steps) {
  std::mt19937 random(seed);
  CrashWorker worker(folder, record, ftpPort);
  for (int i = 0; i < steps; ++i) {
    // The first round does everything once, so that every step is known by its time.
    const auto first = static_cast<unsigned>(i) + seed;
    const unsigned chosen = record.only >= 0 ? static_cast<unsigned>(record.only.load())
                            : i < static_cast<int>(kCrashSteps.size()) ? first
                                                                       : static_cast<unsigned>(random());
    if (!worker.run(static_cast<CrashStep>(chosen % kCrashSteps.size()))) ++record.failed;
  }
  return record.failed == 0;
}

}  // namespace tessaly
