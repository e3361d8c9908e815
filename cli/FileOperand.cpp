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
constexpr int kMostLinks = 40;                          // on the way to a file
constexpr int kAttempts = 100;                          // names tried for a scratch folder

constexpr std::string_view kInputs[] = {"-", "/dev/stdin", "/dev/fd/0", "/proc/self/fd/0"};
constexpr std::string_view kOutputs[] = {"-", "/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"};
constexpr std::string_view kErrorOutputs[] = {"/dev/stderr", "/dev/fd/2", "/proc/self/fd/2"};

template <std::size_t N>
bool isOneOf(const std::string_view (&names)[N], std::string_view word) {
  return std::find(std::begin(names), std::end(names), word) != std::end(names);
}

bool isDescriptor(const std::string& path) {
  return isOneOf(kInputs, path) || isOneOf(kOutputs, path) || isOneOf(kErrorOutputs, path) ||
         path.starts_with("/dev/fd/") || (path.starts_with("/proc/") && path.find("/fd/") != path.npos);
}

// The word for a stream: the descriptor that the word names or that links lead to, or the path of what is no
// regular file. Empty for a file. A descriptor may be that of a regular file, so the way is looked at, too.
std::string streamOf(const SiteRoot& root, const std::string& word, const std::string& path) {
  if (isDescriptor(word)) return word;
  fs::path host = root.resolve(path);
  std::error_code error;
  for (int i = 0; i < kMostLinks && fs::is_symlink(fs::symlink_status(host, error)); ++i) {
    host = (host.parent_path() / fs::read_symlink(host, error)).lexically_normal();
    if (isDescriptor(host.string())) return host.string();
  }
  const fs::file_status status = fs::status(host, error);
  const bool isFile = !fs::exists(status) || fs::is_regular_file(status) || fs::is_directory(status);
  return isFile ? std::string() : host.string();
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
  operand.stream_ = streamOf(root, word, operand.path_);
  if (!operand.isStream()) return operand;
  if (use == FileUse::kChange && word != "-") {
    return Failure{Failure::Kind::kInTheWay,
                   "is no regular file; with - a macro is changed on its way from input to output"};
  }
  // First: a stream that never ends, or whose reader is killed, leaves nothing behind.
  const auto bytes =
      use == FileUse::kWrite ? Expected<std::string>(std::string()) : readStream(operand.stream_, streams);
  if (!bytes) return bytes.failure();
  auto scratch = ScratchFile::make();
  if (!scratch) return scratch.failure();
  operand.scratch_ = *std::move(scratch);
  operand.path_ = operand.scratch_.path(bytes->starts_with(kKeyFileStart) ? kKeyFileName : kMacroName);
  if (use == FileUse::kWrite) return operand;
  if (Outcome written = writeFile(root, operand.path_, *bytes); !written) return written.failure();
  return operand;
}

Outcome FileOperand::deliver(const SiteRoot& root, const ProgramStreams& streams) const {
  if (!isStream()) return {};
  const auto bytes = readFile(root, path_);
  if (!bytes) return bytes.failure();
  return writeStream(stream_, streams, *bytes);
}

std::string sitePathOf(const std::string& file) {
  const bool drive =
      file.size() >= 2 && file[1] == ':' && std::isalpha(static_cast<unsigned char>(file[0])) != 0;
  if (drive || file.empty() || file.front() == '/') return file;
  std::error_code error;
  const fs::path whole = fs::absolute(hostPath(file), error);
  const fs::path plain = fs::weakly_canonical(whole, error);
  return SiteRoot::nativePath(error ? whole : plain);
}

bool isKeyFile(std::string_view path) { return endsWithNoCase(path, kKeyFileEnd); }

}  // namespace tessaly
