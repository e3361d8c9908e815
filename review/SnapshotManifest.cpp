#include "review/SnapshotManifest.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <tuple>
#include <utility>

#include "platform/Sha256.h"
#include "platform/Text.h"
#include "platform/Workplace.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kFormat = "format";
constexpr const char* kFormatName = "tessaly-snapshot";
constexpr const char* kVersion = "version";
constexpr int kOurVersion = 1;
constexpr const char* kPanel = "panel";
constexpr const char* kFolder = "folder";
constexpr const char* kTime = "time";
constexpr const char* kWorkplaces = "workplaces";
constexpr const char* kMacros = "macros";
constexpr const char* kWorkplace = "workplace";
constexpr const char* kNumber = "number";
constexpr const char* kName = "name";
constexpr const char* kSize = "size";
constexpr const char* kSum = "sha256";
constexpr int kDeepest = 3;  // the whole, the rows, one row; what lies deeper is nothing of ours

Failure refused(std::string text) { return {Failure::Kind::kNoSnapshot, std::move(text)}; }
Failure badList() { return refused("has a list that cannot be read"); }

std::optional<std::string> textIn(const Json& object, const char* name) {
  const auto found = object.find(name);
  if (found == object.end() || !found->is_string()) return std::nullopt;
  return found->get<std::string>();
}

std::optional<std::uint64_t> numberIn(const Json& object, const char* name) {
  const auto found = object.find(name);
  if (found == object.end() || !found->is_number_unsigned()) return std::nullopt;
  return found->get<std::uint64_t>();
}

std::optional<int> workplaceOf(const Json& value) {
  if (!value.is_number_unsigned() || value.get<std::uint64_t>() > Workplace::kCount) return std::nullopt;
  const int workplace = value.get<int>();
  return Workplace::of(workplace) ? std::optional(workplace) : std::nullopt;
}

// As written: what reads as another time, or as none, is refused.
std::optional<std::chrono::sys_seconds> timeOf(const std::string& text) {
  using namespace std::chrono;
  if (text.size() != utcText({}).size()) return std::nullopt;
  const auto part = [&](std::size_t at, std::size_t size) {
    return parseInt(std::string_view(text).substr(at, size));
  };
  const auto unsignedPart = [&](std::size_t at) { return static_cast<unsigned>(part(at, 2)); };
  const year_month_day date{year(part(0, 4)), month(unsignedPart(5)), day(unsignedPart(8))};
  if (!date.ok()) return std::nullopt;
  const sys_seconds time = sys_days(date) + hours(part(11, 2)) + minutes(part(14, 2)) + seconds(part(17, 2));
  return utcText(time) == text ? std::optional(time) : std::nullopt;
}

bool isSum(const std::string& text) {
  return text.size() == kSha256Digits && text.find_first_not_of("0123456789abcdef") == text.npos;
}

std::optional<SnapshotManifest::Row> rowOf(const Json& object, bool folder) {
  if (!object.is_object()) return std::nullopt;
  const auto place = object.find(kWorkplace);
  if ((place == object.end()) != folder) return std::nullopt;
  const auto workplace = folder ? std::optional(Snapshot::kFolder) : workplaceOf(*place);
  const auto number = MacroNumber::parse(textIn(object, kNumber).value_or(""));
  const auto name = textIn(object, kName);
  const auto size = numberIn(object, kSize);
  const auto sum = textIn(object, kSum);
  if (!workplace || !number || !name || !size || !sum || !isSum(*sum)) return std::nullopt;
  return SnapshotManifest::Row{*workplace, *number, *name, *size, *sum};
}

Outcome readWorkplaces(const Json& whole, SnapshotManifest& manifest) {
  if (manifest.origin.address.empty()) {
    manifest.workplaces = {Snapshot::kFolder};
    return {};
  }
  const auto list = whole.find(kWorkplaces);
  if (list == whole.end() || !list->is_array()) return badList();
  for (const Json& value : *list) {
    const auto workplace = workplaceOf(value);
    if (!workplace || (!manifest.workplaces.empty() && *workplace <= manifest.workplaces.back()))
      return badList();
    manifest.workplaces.push_back(*workplace);
  }
  return {};
}

Outcome readRows(const Json& whole, SnapshotManifest& manifest) {
  const auto list = whole.find(kMacros);
  if (list == whole.end() || !list->is_array()) return badList();
  const auto key = [](const SnapshotManifest::Row& row) {
    return std::tuple(row.workplace, row.number.value());
  };
  for (const Json& object : *list) {
    const auto row = rowOf(object, manifest.origin.address.empty());
    if (!row || std::ranges::find(manifest.workplaces, row->workplace) == manifest.workplaces.end() ||
        (!manifest.rows.empty() && key(*row) <= key(manifest.rows.back())))
      return badList();
    manifest.rows.push_back(*row);
  }
  return {};
}

}  // namespace

std::string SnapshotManifest::text() const {
  const bool panel = !origin.address.empty();
  Json whole{{kFormat, kFormatName}, {kVersion, kOurVersion}, {kTime, utcText(time)}};
  if (panel) {
    whole[kPanel] = origin.address;
    whole[kWorkplaces] = workplaces;
  } else {
    whole[kFolder] = origin.folder;
  }
  Json list = Json::array();
  for (const Row& row : rows) {
    Json object = Json::object();
    if (panel) object[kWorkplace] = row.workplace;
    object[kNumber] = row.number.text();
    object[kName] = row.name;
    object[kSize] = row.size;
    object[kSum] = row.sum;
    list.push_back(std::move(object));
  }
  whole[kMacros] = std::move(list);
  return whole.dump(1) + '\n';
}

Expected<SnapshotManifest> SnapshotManifest::read(std::string_view text) {
  const auto shallow = [](int depth, Json::parse_event_t, Json&) { return depth <= kDeepest; };
  const Json whole = Json::parse(text, shallow, false);
  if (!whole.is_object() || textIn(whole, kFormat) != kFormatName) return badList();
  const auto version = numberIn(whole, kVersion);
  if (version != std::uint64_t{kOurVersion})
    return refused("has a list of another version than 1, which this program does not read");
  SnapshotManifest manifest;
  manifest.origin = {textIn(whole, kPanel).value_or(""), textIn(whole, kFolder).value_or("")};
  const auto time = timeOf(textIn(whole, kTime).value_or(""));
  if (manifest.origin.address.empty() == manifest.origin.folder.empty() || !time) return badList();
  manifest.time = *time;
  if (const Outcome read = readWorkplaces(whole, manifest); !read) return read.failure();
  if (const Outcome read = readRows(whole, manifest); !read) return read.failure();
  return manifest;
}

}  // namespace tessaly
