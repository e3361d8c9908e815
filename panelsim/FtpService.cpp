#include "panelsim/FtpService.h"

#include <array>
#include <chrono>
#include <string_view>
#include <utility>

#include "FtpServerText.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr const char* kPython = "/usr/bin/python3";
constexpr int kStartTimeMs = 15000;
constexpr std::chrono::seconds kAnswerTime{5};
constexpr std::string_view kReady = "ready ", kFailed = "failed ", kEvent = "event ";

// As the server calls them.
constexpr std::pair<const char*, bool FtpFaults::*> kSwitches[] = {
    {"refuse-login", &FtpFaults::refuseLogin},          {"disk-full", &FtpFaults::diskFull},
    {"refuse-download", &FtpFaults::refuseDownload},    {"stall-transfer", &FtpFaults::stallTransfer},
    {"swap-after-upload", &FtpFaults::swapAfterUpload}, {"dead-line", &FtpFaults::deadLine}};
constexpr std::pair<const char*, FtpFaults::Count FtpFaults::*> kCounts[] = {
    {"cut-transfer", &FtpFaults::cutAfter},
    {"flip-byte", &FtpFaults::flipByte},
    {"cut-silent", &FtpFaults::cutSilent},
    {"slow-transfer", &FtpFaults::bytesPerSecond},
    {"garble", &FtpFaults::garbleAfter}};

}  // namespace

bool FtpService::start(const std::string& address, std::uint16_t port, const std::string& treeRoot,
                       const FtpFaults& faults, std::string& reason) {
  stop();
  if (!child_.start({kPython, "-c", std::string(kFtpServerText), address, std::to_string(port), treeRoot})) {
    reason = std::string(kPython) + " cannot be run";
    return false;
  }
  const std::string line = child_.readLine(kStartTimeMs).value_or("");
  if (!line.starts_with(kReady)) {
    reason = line.starts_with(kFailed) ? line.substr(kFailed.size()) : "the FTP server does not start";
    child_.stop();
    return false;
  }
  port_ = static_cast<std::uint16_t>(parseInt(line.substr(kReady.size())));
  reader_ = std::thread([this] { readEvents(); });
  if (setFaults(faults)) return true;
  reason = "the FTP server does not answer";
  return false;
}

void FtpService::stop() {
  child_.stop();
  if (reader_.joinable()) reader_.join();
}

void FtpService::readEvents() {
  while (const auto line = child_.readLine()) {
    if (line->starts_with(kEvent)) {
      log_("ftp: " + line->substr(kEvent.size()));
      continue;
    }
    {
      const std::scoped_lock guard(mutex_);
      ++answers_;
    }
    changed_.notify_all();
  }
}

bool FtpService::setFaults(const FtpFaults& faults) {
  bool taken = true;
  for (const auto& [name, on] : kSwitches)
    taken = taken && command(std::string(name) + (faults.*on ? " on" : " off"));
  for (const auto& [name, count] : kCounts)
    taken = taken &&
            command(std::string(name) + ' ' + (faults.*count ? std::to_string(*(faults.*count)) : "off"));
  return taken;
}

bool FtpService::command(const std::string& line) {
  std::unique_lock guard(mutex_);
  const std::size_t before = answers_;
  return child_.writeLine(line) && changed_.wait_for(guard, kAnswerTime, [&] { return answers_ != before; });
}

}  // namespace tessaly
