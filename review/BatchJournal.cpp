#include "review/BatchJournal.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

#include "platform/Files.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"
#include "review/BatchText.h"

namespace tessaly {
namespace {

constexpr const char* kFolder = "batches";  // under the root, beside the history and the drives
constexpr const char* kLockFile = "lock";
constexpr std::string_view kEnding = ".batch";
constexpr std::string_view kNameCharacters = "0123456789abcdef-";

std::string pathOf(const std::string& name) { return std::string(kFolder) + '\\' + name; }

Expected<FileLock> lockOf(const SiteRoot& root, const std::string& name) {
  return FileLock::take(root.path() / kFolder / kLockFile, textSum(name), std::chrono::milliseconds(0));
}

// "20261125-131834-9f3a1c20.batch", in UTC.
std::string newName() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm utc{};
  char text[sizeof "20261125-131834"] = {};
  if (::gmtime_r(&now, &utc) != nullptr) std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &utc);
  return format("%s-%08x", text, static_cast<unsigned>(std::random_device()())) + std::string(kEnding);
}

bool isName(std::string_view name) {
  return name.size() > kEnding.size() && name.ends_with(kEnding) &&
         name.substr(0, name.size() - kEnding.size()).find_first_not_of(kNameCharacters) == name.npos;
}

}  // namespace

Expected<BatchJournal> BatchJournal::begin(const SiteRoot& root, const BatchRecord& record) {
  const std::string text = batchText(record);
  if (text.size() > kLargestFile)
    return Failure{Failure::Kind::kTooLarge, "the macros are too many, or too large, for one batch"};
  if (Outcome made = makeOwnFolder(root.path() / kFolder); !made) return made.failure();
  const std::string name = newName();
  auto lock = lockOf(root, name);
  if (!lock) return lock.failure();
  if (Outcome written = writeOwnFile(root, pathOf(name), text); !written) {
    static_cast<void>(removeFile(root, pathOf(name)));  // what a cut of the power may take is no journal
    return written.failure();
  }
  return BatchJournal(root, pathOf(name), *std::move(lock), text.size());
}

Expected<std::vector<std::string>> BatchJournal::namesIn(const SiteRoot& root) {
  std::error_code error;
  const auto kind = std::filesystem::symlink_status(root.path() / kFolder, error).type();
  if (kind == std::filesystem::file_type::none) return systemFailure(error.value(), "looked at");
  if (kind != std::filesystem::file_type::directory) return std::vector<std::string>();
  auto names = listFolder(root, kFolder, kEnding);
  if (names) std::erase_if(*names, [](const std::string& name) { return !isName(name); });
  return names;
}

Expected<BatchJournal::Found> BatchJournal::open(const SiteRoot& root, const std::string& name) {
  const std::string path = pathOf(name);
  if (!isThisUsers(root, path)) {
    const auto read = readOwnFile(root, path, 0);
    const bool there = read || read.failure().kind == Failure::Kind::kTooLarge ||
                       read.failure().kind == Failure::Kind::kNoPermission;
    if (!there) return read.failure();
    return Failure{Failure::Kind::kNoPermission, "is another user's, who is to start the program"};
  }
  auto lock = lockOf(root, name);
  if (!lock) return lock.failure();
  const auto text = readOwnFile(root, path);
  if (!text) return text.failure();
  std::size_t end = 0;
  auto record = readBatch(*text, end);
  if (!record) return Failure{Failure::Kind::kNoSnapshot, "is damaged, or of another version"};
  return Found{BatchJournal(root, path, *std::move(lock), end), *std::move(record)};
}

Outcome BatchJournal::append(const std::string& record) {
  Outcome appended = appendToOwnFile(*root_, path_, size_, record);
  if (appended) size_ += record.size();
  return appended;
}

Outcome BatchJournal::noteBegun(std::size_t item, const Expected<std::string>& old, bool tears) {
  return append(batchBegunText({item, HeldContent::asRead(old), tears && old ? *old : std::string()}));
}

Outcome BatchJournal::noteUndoing() { return append(batchUndoingText()); }

Outcome BatchJournal::end() {
  const Outcome removed = removeFile(*root_, path_);
  if (removed) return removed;
  return Failure{Failure::Kind::kUnflushed,
                 "is there, but the batch may begin anew after a power cut: " + removed.failure().text};
}

}  // namespace tessaly
