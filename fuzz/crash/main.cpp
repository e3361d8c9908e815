// Kills a worker at random points of its writes and looks at every file afterwards.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "fuzz/crash/BatchUser.h"
#include "fuzz/crash/CrashReport.h"
#include "fuzz/crash/CrashWorker.h"
#include "fuzz/crash/FlushWatch.h"
#include "panelsim/FtpService.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using std::chrono::microseconds;
using std::chrono::seconds;

constexpr const char* kUsage = "usage: tessaly-crash-harness [--kills N] [--seed N] [--only STEP]\n";
constexpr const char* kWorkerOption = "--worker";
constexpr const char* kRecordFile = "record";
constexpr int kEndless = 1000000;   // steps of a worker that is going to be killed
constexpr int kWholeRun = 24;       // steps of a worker that ends by itself
constexpr int kLatestStep = 8;      // of a worker, in which it is killed
constexpr seconds kStartTime{120};  // for a worker to get there
constexpr microseconds kLookAgain{20};

CrashRecord* mapRecord(const fs::path& folder, bool fresh) {
  const int file = ::open((folder / kRecordFile).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0 || ::ftruncate(file, sizeof(CrashRecord)) != 0) return nullptr;
  void* const memory = ::mmap(nullptr, sizeof(CrashRecord), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
  ::close(file);
  if (memory == MAP_FAILED) return nullptr;
  return fresh ? new (memory) CrashRecord : static_cast<CrashRecord*>(memory);
}

// The worker is a program of its own, as the editor is: its start after a kill belongs to what is tried.
pid_t startWorker(const fs::path& folder, std::uint16_t ftpPort, unsigned seed, int steps) {
  const std::string port = std::to_string(ftpPort);
  const std::string seedText = std::to_string(seed);
  const std::string stepText = std::to_string(steps);
  const pid_t parent = ::getpid();
  const pid_t worker = ::fork();
  if (worker != 0) return worker;
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent) ::_exit(127);
  ::execl("/proc/self/exe", "tessaly-crash-harness", kWorkerOption, folder.c_str(), port.c_str(),
          seedText.c_str(), stepText.c_str(), nullptr);
  ::_exit(127);
}

int workerMain(char** arguments) {
  const fs::path folder = arguments[0];
  CrashRecord* const record = mapRecord(folder, false);
  if (record == nullptr) return 1;
  const auto port = static_cast<std::uint16_t>(parseInt(arguments[1]));
  const auto seed = static_cast<unsigned>(parseInt(arguments[2]));
  return runCrashWorker(folder, *record, port, seed, parseInt(arguments[3])) ? 0 : 1;
}

class CrashHarness {
 public:
  CrashHarness(const fs::path& folder, CrashRecord& record, std::uint16_t ftpPort, unsigned seed)
      : folder_(folder),
        site_(folder),
        record_(record),
        report_(site_, record),
        ftpPort_(ftpPort),
        random_(seed) {}

  bool run(int kills) {
    if (!site_.prepare()) {
      report_.wrong("the site cannot be made");
      return false;
    }
    wholeRun();
    // Steps that cannot be flushed stop no edit.
    for (const CrashStepRow& row : kCrashSteps)
      if (row.step != CrashStep::kSteps) flushEverything(row);
    for (int i = 0; i < kills && report_.good(); ++i) killOnce();
    wholeRun();
    report_.print();
    std::printf("%zu flushes watched, each made to fail once\n", flushes_);
    return report_.good();
  }

 private:
  unsigned chosen(unsigned bound) { return static_cast<unsigned>(random_()) % bound; }

  pid_t start(int steps) {
    record_.started = 0;
    record_.step = CrashRecord::kBetweenSteps;
    return startWorker(folder_, ftpPort_, chosen(1U << 30), steps);
  }

  // Each step with every flush watched, and again with each flush failing in turn: what is done is on the
  // disk, and what may not be is not called done. A file is whole all the same.
  void flushEverything(const CrashStepRow& row) {
    std::size_t flushes = 1;
    for (std::size_t failing = 0; failing <= flushes; ++failing) {
      if (row.step == CrashStep::kKeep) site_.forgetHistory();     // and its folders are new
      if (row.step == CrashStep::kBatch) record_.generation |= 1;  // the next one is all or none
      FlushWatch::start(failing);
      const bool done = runCrashStep(folder_, record_, ftpPort_, row.step);
      FlushWatch::stop();
      if (failing == 0) flushes = FlushWatch::flushes();
      // A batch keeps what the one before has kept already only once, and has fewer then.
      const bool failed = failing > 0 && FlushWatch::flushes() >= failing;
      if (done == failed)
        report_.wrong(std::string(row.name) + ": flush " + std::to_string(failing) + " has no say");
      if (done && !FlushWatch::fault().empty()) report_.wrong(row.name + (": " + FlushWatch::fault()));
      if (row.step == CrashStep::kKeep) continue;
      // What could not be put back is put back, or ended, by the next start.
      if (row.step == CrashStep::kBatch) static_cast<void>(CrashBatchUser(folder_, ftpPort_).recover());
      const auto generation = site_.generation(row.step);
      if (!generation) report_.wrong(std::string(row.name) + ": no whole file after a failed flush");
      record_.committed.at(static_cast<std::size_t>(row.step)) = generation.value_or(0);
    }
    if (row.step == CrashStep::kKeep && !runCrashStep(folder_, record_, ftpPort_, row.step))
      report_.wrong("the history does not begin anew");
    flushes_ += flushes;
  }

  void wholeRun() {
    int status = 0;
    const pid_t worker = start(kWholeRun);
    if (worker < 0 || ::waitpid(worker, &status, 0) != worker || status != 0)
      report_.wrong("a worker failed");
    report_.lookAtFinished();
  }

  void killOnce() {
    const int last = 1 + static_cast<int>(chosen(kLatestStep));
    const pid_t worker = start(kEndless);
    const auto latest = std::chrono::steady_clock::now() + kStartTime;
    while (record_.started < last && std::chrono::steady_clock::now() < latest)
      std::this_thread::sleep_for(kLookAgain);
    if (record_.started < last) report_.wrong("a worker does not get to work");
    const int step = record_.step;
    const auto average =
        step < 0 ? 1000 : record_.microseconds.at(static_cast<std::size_t>(step)).load() + std::int64_t{1};
    std::this_thread::sleep_for(microseconds(random_() % static_cast<unsigned>(average)));
    ::kill(worker, SIGKILL);
    ::waitpid(worker, nullptr, 0);
    if (!CrashBatchUser(folder_, ftpPort_).recover()) report_.wrong("a batch is neither ended nor undone");
    report_.lookAtKilled();
  }

  fs::path folder_;
  CrashSite site_;
  CrashRecord& record_;
  CrashReport report_;
  std::uint16_t ftpPort_;
  std::mt19937 random_;
  std::size_t flushes_ = 0;
};

// `only` is the number of a step, from 0; -1 for all.
int harnessMain(int kills, unsigned seed, int only) {
  std::string name = (fs::temp_directory_path() / "tessaly-crash-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) return 1;
  const fs::path folder = name;
  CrashRecord* const record = mapRecord(folder, true);
  FtpService ftp([](const std::string&) {});
  std::string reason;
  fs::create_directories(CrashSite(folder).panelTree());
  if (record == nullptr || !ftp.start("127.0.0.1", 0, CrashSite(folder).panelTree().string(), {}, reason)) {
    std::fprintf(stderr, "cannot start: %s\n", reason.c_str());
    return 1;
  }
  record->only = only;
  const bool good = CrashHarness(folder, *record, ftp.port(), seed).run(kills);
  ftp.stop();
  if (good) {
    fs::remove_all(folder);
  } else {
    std::fprintf(stderr, "seed %u; the files stay in %s\n", seed, folder.c_str());
  }
  return good ? 0 : 1;
}

}  // namespace
}  // namespace tessaly

int main(int argc, char** argv) {
  if (argc == 6 && std::strcmp(argv[1], tessaly::kWorkerOption) == 0) return tessaly::workerMain(argv + 2);
  int kills = 100;
  int seed = 1;
  int only = -1;
  for (int i = 1; i < argc; i += 2) {
    int* const value = std::strcmp(argv[i], "--kills") == 0  ? &kills
                       : std::strcmp(argv[i], "--seed") == 0 ? &seed
                       : std::strcmp(argv[i], "--only") == 0 ? &only
                                                             : nullptr;
    if (value == nullptr || i + 1 == argc) {
      std::fputs(tessaly::kUsage, stderr);
      return 2;
    }
    *value = tessaly::parseInt(argv[i + 1]);
  }
  return tessaly::harnessMain(kills, static_cast<unsigned>(seed), only);
}
