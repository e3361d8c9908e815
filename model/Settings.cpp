#include "model/Settings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::size_t kIntegerBytes = 4;
constexpr std::uint64_t kBytesAfterText = 2;  // the terminating zero and one byte of no meaning
constexpr std::size_t kMostSettingsBytes = std::size_t{1} << 20;  // a real file has some hundred bytes

std::array<std::string*, 4> textsOf(Settings& settings) {
  return {&settings.pathA, &settings.pathB, &settings.addressA, &settings.addressB};
}

// Takes the fields off the front of the file's bytes; each reports false once the bytes do not reach.
class SettingsReader {
 public:
  explicit SettingsReader(std::string_view bytes) : left_(bytes) {}

  std::optional<std::uint32_t> readInteger() {
    if (left_.size() < kIntegerBytes) return std::nullopt;
    std::uint32_t value = 0;
    for (std::size_t i = kIntegerBytes; i > 0; --i)
      value = (value << 8U) | static_cast<unsigned char>(left_[i - 1]);
    left_.remove_prefix(kIntegerBytes);
    return value;
  }

  bool readSigned(std::int32_t& value) {
    const auto bits = readInteger();
    if (bits) value = static_cast<std::int32_t>(*bits);
    return bits.has_value();
  }

  // A length beyond the end takes what is left, and is the last text.
  bool readText(std::string& text) {
    const auto length = readInteger();
    if (!length) return false;
    const std::uint64_t wanted = std::uint64_t{*length} + kBytesAfterText;
    const bool whole = wanted <= left_.size();
    const std::string_view field = left_.substr(0, whole ? static_cast<std::size_t>(wanted) : left_.size());
    text = field.substr(0, std::min(field.find('\0'), field.size()));
    left_.remove_prefix(field.size());
    return whole;
  }

 private:
  std::string_view left_;
};

void appendInteger(std::string& bytes, std::uint32_t value) {
  for (std::size_t i = 0; i < kIntegerBytes; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFFU);
}

}  // namespace

Settings defaultSettings() { return {}; }

Outcome readSettings(const SiteRoot& root, Settings& settings) {
  settings = defaultSettings();
  const auto bytes = readFilePrefix(root, kSettingsFile, kMostSettingsBytes);
  if (!bytes) return bytes.failure();
  SettingsReader reader(*bytes);
  if (!reader.readSigned(settings.format) || !reader.readSigned(settings.frameRate)) return {};
  if (settings.frameRate != kFrameRate60Hz) settings.frameRate = kFrameRate50Hz;
  for (std::string* text : textsOf(settings)) {
    if (!reader.readText(*text)) break;
  }
  return {};
}

Outcome writeSettings(const SiteRoot& root, const Settings& settings) {
  std::string bytes;
  appendInteger(bytes, static_cast<std::uint32_t>(settings.format));
  appendInteger(bytes, static_cast<std::uint32_t>(settings.frameRate));
  for (const std::string* text : {&settings.pathA, &settings.pathB, &settings.addressA, &settings.addressB}) {
    appendInteger(bytes, static_cast<std::uint32_t>(text->size()));
    bytes += *text;
    bytes.append(kBytesAfterText, '\0');
  }
  return writeFile(root, kSettingsFile, bytes);
}

bool settingsHold(std::string_view utf8) {
  return utf8.find('\0') == utf8.npos && windows1252ToUtf8(utf8ToWindows1252(utf8)) == utf8;
}

std::string derivedPath(std::string_view stored) {
  std::string path(stored);
  if (!path.empty() && path.back() != '\\') path += '\\';
  return path;
}

}  // namespace tessaly
