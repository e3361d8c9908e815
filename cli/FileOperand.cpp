#include "cli/FileOperand.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

#include "platform/Files.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kKeyFileStart = "#UPK";
constexpr std::string_view kKeyFileEnd = ".upk";
constexpr const char* kMacroName = "macro.mac";  // of a scratch file
constexpr const char* kKeyFileName = "key00.upk";
constexpr std::size_t kBlock = std::size_t{64} * 1024;  // bytes
constexpr int kAttempts = 100;                          // names tried for a scratch folder

constexpr std::string_view kInputs[] = {"-", "/dev/stdin", "/dev/fd/0", "/proc/self/fd/0"};
constexpr std::string_view kOutputs[] = {"-", "/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"};
constexpr std::string_view kErrorOutputs[] = {"/dev/stderr", "/dev/fd/2", "/proc/self/fd/2"};

template <std::size_t N>
bool isOneOf(const std::string_view (&names)[N], std::string_view word) {
  return std::find(std::begin(names), std::end(names), word) != std::end(names);
}

bool isStreamWord(const SiteRoot& root, const std::string& word, const std::string& path) {
  if (isOneOf(kInputs, word) || isOneOf(kOutputs, word) || isOneOf(kErrorOutputs, word)) return true;
  if (word.starts_with("/dev/fd/") || (word.starts_with("/proc/") && word.find("/fd/") != word.npos))
    return true;
  std::error_code unknown;
  const fs::file_status status = fs::status(root.resolve(path), unknown);
  return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

// To the end, or to the bound of a file.
Expected<std::string> readAll(std::istream& in) {
  std::string bytes;
  std::vector<char> block(kBlock);
  while (in.read(block.data(), static_cast<std::streamsize>(block.size())), in.gcount() > 0) {
    bytes.append(block.data(), static_cast<std::size_t>(in.gcount()));
    if (bytes.size() > kLargestFile) return systemFailure(EFBIG, "read");
  }
  if (in.bad()) return systemFailure(EIO, "read");
  return bytes;
}

Expected<std::string> readStream(const std::string& word, const ProgramStreams& streams) {
  if (isOneOf(kInputs, word)) return readAll(streams.in);
  errno = 0;
  std::ifstream file(word, std::ios::binary);
  if (!file) return systemFailure(errno, "read");
  return readAll(file);
}

// At its end: what stands there already is not ours.
Outcome writeStream(const std::string& word, const ProgramStreams& streams, const std::string& bytes) {
  std::ofstream file;
  std::ostream* out = isOneOf(kErrorOutputs, word) ? &streams.errors : &streams.out;
  errno = 0;
  if (!isOneOf(kErrorOutputs, word) && !isOneOf(kOutputs, word)) {
    file.open(word, std::ios::binary | std::ios::app);
    out = &file;
  }
  out->write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
  if (*out) return {};
  return systemFailure(errno == 0 ? EIO : errno, "written");
}

}  // namespace

ScratchFile::~ScratchFile() {
  std::error_code ignored;
  if (!folder_.empty()) fs::remove_all(folder_, ignored);
}

ScratchFile& ScratchFile::operator=(ScratchFile&& other) noexcept {
  std::swap(folder_, other.folder_);
  return *this;
}

Expected<ScratchFile> ScratchFile::make() {
  std::error_code error;
  const fs::path parent = fs::temp_directory_path(error);
  std::random_device random;
  ScratchFile file;
  for (int i = 0; !error && i < kAttempts; ++i) {
    const fs::path folder = parent / format("tessaly-cli-%08x%08x", random(), random());
    if (!fs::create_directory(folder, error)) continue;
    file.folder_ = folder;
    fs::permissions(folder, fs::perms::owner_all, error);
    if (!error) return file;
  }
  return systemFailure(error ? error.value() : EEXIST, "put into a temporary file");
}

Expected<FileOperand> FileOperand::open(const SiteRoot& root, const ProgramStreams& streams,
                                        const std::string& word, FileUse use) {
  FileOperand operand;
  operand.word_ = word;
  operand.path_ = sitePathOf(word);
  operand.stream_ = isStreamWord(root, word, operand.path_);
  if (!operand.stream_) return operand;
  if (use == FileUse::kChange && word != "-") {
    return Failure{Failure::Kind::kInTheWay,
                   "is no regular file; with - a macro is changed on its way from input to output"};
  }
  auto scratch = ScratchFile::make();
  if (!scratch) return scratch.failure();
  operand.scratch_ = *std::move(scratch);
  operand.path_ = operand.scratch_.path(kMacroName);
  if (use == FileUse::kWrite) return operand;
  const auto bytes = readStream(word, streams);
  if (!bytes) return bytes.failure();
  if (bytes->starts_with(kKeyFileStart)) operand.path_ = operand.scratch_.path(kKeyFileName);
  if (Outcome written = writeFile(root, operand.path_, *bytes); !written) return written.failure();
  return operand;
}

Outcome FileOperand::deliver(const SiteRoot& root, const ProgramStreams& streams) const {
  if (!stream_) return {};
  const auto bytes = readFile(root, path_);
  if (!bytes) return bytes.failure();
  return writeStream(word_, streams, *bytes);
}

std::string sitePathOf(const std::string& file) {
  const bool drive =
      file.size() >= 2 && file[1] == ':' && std::isalpha(static_cast<unsigned char>(file[0])) != 0;
  if (drive || file.empty() || file.front() == '/') return file;
  std::error_code error;
  const fs::path whole = fs::absolute(file, error);
  const fs::path plain = fs::weakly_canonical(whole, error);
  return error ? whole.string() : plain.string();
}

bool isKeyFile(std::string_view path) { return endsWithNoCase(path, kKeyFileEnd); }

}  // namespace tessaly
