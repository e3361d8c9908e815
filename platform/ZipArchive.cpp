#include "platform/ZipArchive.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <set>
#include <utility>

#include "platform/Text.h"
#include "platform/ZipLibrary.h"

namespace tessaly {
namespace {

using Kind = Failure::Kind;

constexpr std::uint32_t kPlainFile = 0100644;  // kind and mode, as this kind of system has them
constexpr std::uint32_t kKindOfFile = 0170000;
constexpr std::uint32_t kRegular = 0100000;
constexpr int kModeShift = 16;    // of the attributes
constexpr int kFirstYear = 1980;  // of the archive's times
constexpr int kLastYear = 2107;

Failure refused(std::string text) { return {Kind::kNoSnapshot, std::move(text)}; }
Failure noLibrary() {
  return refused("cannot be used: the library for archives (libzip4) cannot be loaded; is it installed?");
}
Failure noMemory() { return {Kind::kNoMemory, "needs more memory than there is"}; }
Failure damaged() { return refused("is no archive, or a damaged one"); }
std::string inQuotes(std::string_view name) { return '"' + visibleUtf8(name) + '"'; }

struct ReleaseSource {
  const ZipLibrary& zip;
  void operator()(zip_source_t* source) const { zip.sourceFree(source); }
};
struct ReleaseArchive {
  const ZipLibrary& zip;
  void operator()(zip_t* archive) const { zip.discard(archive); }
};
struct ReleaseFile {
  const ZipLibrary& zip;
  void operator()(zip_file_t* file) const { zip.closeFile(file); }
};
using Source = std::unique_ptr<zip_source_t, ReleaseSource>;
using Archive = std::unique_ptr<zip_t, ReleaseArchive>;

Source sourceOf(const ZipLibrary& zip, std::string_view bytes) {
  return {zip.sourceOfBytes(bytes.data(), bytes.size(), 0, nullptr), ReleaseSource{zip}};
}

// The source stays ours beside the archive's.
Archive openArchive(const ZipLibrary& zip, const Source& source, int flags) {
  zip.sourceKeep(source.get());
  Archive archive{zip.open(source.get(), flags, nullptr), ReleaseArchive{zip}};
  if (!archive) zip.sourceFree(source.get());
  return archive;
}

// The day and the time of an archive, which are local ones elsewhere, and so would differ from place to
// place.
std::pair<std::uint16_t, std::uint16_t> archiveTime(std::chrono::sys_seconds time) {
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  const int year = std::clamp(static_cast<int>(date.year()), kFirstYear, kLastYear) - kFirstYear;
  const auto dosDate = static_cast<unsigned>(year) << 9 | static_cast<unsigned>(date.month()) << 5 |
                       static_cast<unsigned>(date.day());
  const auto dosTime = static_cast<unsigned>(clock.hours().count()) << 11 |
                       static_cast<unsigned>(clock.minutes().count()) << 5 |
                       static_cast<unsigned>(clock.seconds().count()) / 2;
  return {static_cast<std::uint16_t>(dosDate), static_cast<std::uint16_t>(dosTime)};
}

bool addFile(const ZipLibrary& zip, const Archive& archive, const ZipFile& file,
             std::pair<std::uint16_t, std::uint16_t> time) {
  Source source = sourceOf(zip, file.bytes);
  if (!source) return false;
  const zip_int64_t index = zip.add(archive.get(), file.name.c_str(), source.get(), ZIP_FL_ENC_UTF_8);
  if (index < 0) return false;
  static_cast<void>(source.release());  // the archive's from now on
  const auto at = static_cast<zip_uint64_t>(index);
  return zip.setCompression(archive.get(), at, ZIP_CM_STORE, 0) == 0 &&
         zip.setTime(archive.get(), at, time.second, time.first, 0) == 0 &&
         zip.setAttributes(archive.get(), at, 0, ZIP_OPSYS_UNIX, kPlainFile << kModeShift) == 0;
}

Expected<std::string> bytesOf(const ZipLibrary& zip, const Source& source) {
  zip_stat_t status;
  if (zip.sourceStat(source.get(), &status) != 0 || (status.valid & ZIP_STAT_SIZE) == 0 ||
      zip.sourceOpen(source.get()) != 0)
    return noMemory();
  std::string bytes(status.size, '\0');
  const zip_int64_t count = zip.sourceRead(source.get(), bytes.data(), bytes.size());
  zip.sourceClose(source.get());
  if (count < 0 || static_cast<std::size_t>(count) != bytes.size()) return noMemory();
  return bytes;
}

// The file's place in the list of the archive, once it may be read; `total` is what the files take together.
Expected<ZipFile> unpackFile(const ZipLibrary& zip, const Archive& archive, zip_uint64_t at,
                             std::size_t left) {
  constexpr zip_uint64_t kNeeded =
      ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;
  zip_stat_t status;
  if (zip.stat(archive.get(), at, ZIP_FL_ENC_RAW, &status) != 0 || (status.valid & kNeeded) != kNeeded)
    return damaged();
  ZipFile file{status.name, {}};
  const std::string name = "holds " + inQuotes(file.name) + ", which is ";
  zip_uint8_t system = 0;
  zip_uint32_t attributes = 0;
  if (zip.getAttributes(archive.get(), at, 0, &system, &attributes) != 0) return damaged();
  const std::uint32_t kind = attributes >> kModeShift & kKindOfFile;
  const bool odd = system == ZIP_OPSYS_UNIX && kind != 0 && kind != kRegular;
  if (odd || file.name.ends_with('/')) return refused(name + "no file but a folder, a link or the like");
  if (status.encryption_method != ZIP_EM_NONE) return refused(name + "encrypted");
  if (status.comp_method != ZIP_CM_STORE) return refused(name + "compressed, as nothing is in a snapshot");
  if (status.size != status.comp_size || status.size > left) return refused(name + "larger than its archive");
  const std::unique_ptr<zip_file_t, ReleaseFile> open(zip.openFile(archive.get(), at, 0), ReleaseFile{zip});
  if (!open) return refused(name + "damaged");
  file.bytes.resize(status.size);
  char more = 0;
  const zip_int64_t count = zip.readFile(open.get(), file.bytes.data(), file.bytes.size());
  // Behind the end the sum of the archive's own is checked.
  if (count < 0 || static_cast<std::size_t>(count) != file.bytes.size() ||
      zip.readFile(open.get(), &more, 1) != 0)
    return refused(name + "damaged");
  return file;
}

Expected<std::vector<ZipFile>> unpack(const ZipLibrary& zip, std::string_view bytes, std::size_t mostFiles) {
  const Source source = sourceOf(zip, bytes);
  if (!source) return noMemory();
  const Archive archive = openArchive(zip, source, ZIP_RDONLY | ZIP_CHECKCONS);
  if (!archive) return damaged();
  const zip_int64_t count = zip.countOfEntries(archive.get(), 0);
  if (count < 0) return damaged();
  if (static_cast<std::size_t>(count) > mostFiles)
    return refused(format("holds %lld files, more than a snapshot can have", static_cast<long long>(count)));
  std::vector<ZipFile> files;
  std::set<std::string> names;
  std::size_t left = bytes.size();
  for (zip_int64_t at = 0; at < count; ++at) {
    auto file = unpackFile(zip, archive, static_cast<zip_uint64_t>(at), left);
    if (!file) return file.failure();
    if (!names.insert(file->name).second) return refused("holds " + inQuotes(file->name) + " twice");
    left -= file->bytes.size();
    files.push_back(*std::move(file));
  }
  return files;
}

Expected<std::string> pack(const ZipLibrary& zip, const std::vector<ZipFile>& files,
                           std::chrono::sys_seconds time) {
  const Source target = sourceOf(zip, {});
  if (!target) return noMemory();
  Archive archive = openArchive(zip, target, ZIP_CREATE | ZIP_TRUNCATE);
  if (!archive) return noMemory();
  const auto marked = archiveTime(time);
  for (const ZipFile& file : files) {
    if (!addFile(zip, archive, file, marked)) return noMemory();
  }
  if (zip.close(archive.get()) != 0) return noMemory();
  static_cast<void>(archive.release());  // gone with the closing
  return bytesOf(zip, target);
}

}  // namespace

Expected<std::string> packZip(const std::vector<ZipFile>& files, std::chrono::sys_seconds time) try {
  const ZipLibrary* const zip = ZipLibrary::get();
  return zip == nullptr ? noLibrary() : pack(*zip, files, time);
} catch (const std::bad_alloc&) {
  return noMemory();
}

Expected<std::vector<ZipFile>> unpackZip(std::string_view archive, std::size_t mostFiles) try {
  const ZipLibrary* const zip = ZipLibrary::get();
  return zip == nullptr ? noLibrary() : unpack(*zip, archive, mostFiles);
} catch (const std::bad_alloc&) {
  return noMemory();
}

}  // namespace tessaly
