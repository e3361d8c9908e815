#include "classic/DecodingList.h"

#include <algorithm>
#include <utility>

#include "classic/ClassicValue.h"
#include "platform/Files.h"
#include "platform/FolderEntries.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr const char* kListPath =
    "c:\\Programme\\RV48\\bin\\MacroCdCo_Tarrow\\Cd-0x%02x\\Cd-0x%02x-Co-0x%02x.ini";
constexpr std::size_t kMostListBytes = std::size_t{4} * 1024 * 1024;
constexpr std::ptrdiff_t kMostKeptLists = 256;
constexpr auto kCheckInterval = std::chrono::seconds(1);
constexpr std::uint8_t kSharedDeviceCodes = 4;  // 1 to 4 share the lists of device code 0

// A walk over the parameter bytes of a command along the descriptors of an entry.
class Walk {
 public:
  explicit Walk(const ClassicCommand& command) : command_(command) {}

  bool fits(const KeywordEntry& entry) {
    for (const ParameterDescriptor& descriptor : entry.parameters) {
      last_ = position_;
      if (&descriptor == &entry.parameters.back() && !isAnalog(descriptor.type))
        toggle_ = command_.increments();
      if (!takes(entry, descriptor)) return false;
    }
    return true;
  }

  KeywordEntry result(const KeywordEntry& entry) const {
    KeywordEntry copy = entry;
    copy.toggle = toggle_;
    if (toggle_) copy.step = step(entry.parameters.back().type);
    return copy;
  }

 private:
  bool takes(const KeywordEntry& entry, const ParameterDescriptor& descriptor) {
    switch (descriptor.type) {
      case ParameterType::kByte:
        return takesByte(entry, descriptor);
      case ParameterType::kByteEnum:
      case ParameterType::kWordEnum:
      case ParameterType::kLongEnum: {
        const auto value = number(valueWidth(descriptor.type));
        return value && enumerationRow(entry, descriptor, *value) != nullptr;
      }
      case ParameterType::kWord:
      case ParameterType::kLong:
      case ParameterType::kAnalog:
      case ParameterType::kAnalogBi:
      case ParameterType::kTimecode:
        return number(valueWidth(descriptor.type)).has_value();
      case ParameterType::kInput:
        return takesInput();
      case ParameterType::kString:
      case ParameterType::kClipname:
        return true;
      case ParameterType::kUnknown:
        return false;
    }
    return false;
  }

  // Deliberate: a byte's minimum and maximum stand where an enumeration has its first row and its number of
  // rows, and are tested as such. Existing lists tell their entries apart by it.
  bool takesByte(const KeywordEntry& entry, const ParameterDescriptor& descriptor) {
    ParameterDescriptor rows;
    rows.firstRow = static_cast<std::uint8_t>(descriptor.minimum.value);
    rows.rowCount = static_cast<std::uint8_t>(descriptor.maximum.value);
    const auto value = number(1);
    return value && enumerationRow(entry, rows, *value) != nullptr;
  }

  // Deliberate: three bytes must follow the mark of an extended input, though it takes two of them.
  bool takesInput() {
    constexpr std::uint32_t kExtended = 0xFF;
    const auto value = number(1);
    if (!value || *value != kExtended) return value.has_value();
    if (command_.parameters().size() - position_ < 3) return false;
    position_ += 2;
    return true;
  }

  std::optional<std::uint32_t> number(std::size_t width) {
    const auto value = readValue(command_.parameters(), position_, width);
    if (value) position_ += width;
    return value;
  }

  std::int32_t step(ParameterType type) const {
    const std::size_t width = type == ParameterType::kTimecode ? 0 : valueWidth(type);
    const auto value = width == 0 ? std::nullopt : readValue(command_.parameters(), last_, width);
    return value ? static_cast<std::int32_t>(signedValue(*value, width)) : 0;
  }

  const ClassicCommand& command_;
  std::size_t position_ = 0;
  std::size_t last_ = 0;  // where the latest descriptor begins
  bool toggle_ = false;
};

}  // namespace

std::uint8_t listDeviceCode(std::uint8_t cd) { return cd <= kSharedDeviceCodes ? std::uint8_t{0} : cd; }

std::string decodingListPath(std::uint8_t cd, std::uint8_t co) {
  const std::uint8_t listed = listDeviceCode(cd);
  return format(kListPath, listed, listed, co);
}

std::optional<DecodingList> DecodingList::load(const SiteRoot& root, std::uint8_t cd, std::uint8_t co) {
  const auto bytes = readFilePrefix(root, decodingListPath(cd, co), kMostListBytes);
  if (!bytes) return std::nullopt;
  return parse(*bytes, cd, co);
}

std::optional<KeywordEntry> DecodingList::find(const ClassicCommand& command) const {
  const auto hasKeyword = [&command](const KeywordEntry& entry) { return entry.keyword == command.kw(); };
  const auto first = std::find_if(entries_.begin(), entries_.end(), hasKeyword);
  if (first == entries_.end()) return std::nullopt;
  // Deliberate: a keyword's only entry is taken without a look at the parameters, so that short or unusual
  // commands still show their name; it therefore never toggles.
  if (std::find_if(first + 1, entries_.end(), hasKeyword) == entries_.end()) return *first;
  for (auto entry = first; entry != entries_.end();
       entry = std::find_if(entry + 1, entries_.end(), hasKeyword)) {
    Walk walk(command);
    if (walk.fits(*entry)) return walk.result(*entry);
  }
  return std::nullopt;
}

// A file that a list was read from, also after the list itself was dropped.
struct DecodingLists::Known {
  Known(std::uint8_t theCd, std::uint8_t theCo) : cd(theCd), co(theCo) {}

  const std::uint8_t cd, co;

  std::mutex mutex;  // guards what follows
  std::chrono::steady_clock::time_point checked;
  std::optional<FileStamp> stamp;          // nothing before the first look
  bool unusable = false;                   // as it was read
  std::weak_ptr<const DecodingList> list;  // while somebody has it
};

std::shared_ptr<const DecodingList> DecodingLists::list(std::uint8_t cd, std::uint8_t co) {
  const std::uint8_t device = listDeviceCode(cd);
  const auto key = static_cast<std::uint16_t>(device << 8 | co);
  std::shared_ptr<Known> known;
  std::shared_ptr<const DecodingList> before;
  {
    const std::lock_guard lock(mutex_);
    Slot& slot = slots_[key];
    if (!slot.known) slot.known = std::make_shared<Known>(device, co);
    slot.used = ++uses_;
    known = slot.known;
    before = slot.recent;
  }
  auto list = asItIs(*known);
  if (list != before) keep(key, list);
  return list;
}

void DecodingLists::keep(std::uint16_t key, const std::shared_ptr<const DecodingList>& list) {
  const std::lock_guard lock(mutex_);
  slots_[key].recent = list;
  const auto held = [](const auto& entry) { return entry.second.recent != nullptr; };
  if (std::ranges::count_if(slots_, held) <= kMostKeptLists) return;
  const auto older = [&](const auto& left, const auto& right) {
    return held(left) != held(right) ? held(left) : left.second.used < right.second.used;
  };
  std::ranges::min_element(slots_, older)->second.recent.reset();
}

std::uint64_t DecodingLists::revision() {
  const auto now = clock_();
  std::vector<std::shared_ptr<Known>> entries;
  {
    const std::lock_guard lock(mutex_);
    if (now - looked_ < kCheckInterval) return revision_;
    looked_ = now;
    for (const auto& [key, slot] : slots_) entries.push_back(slot.known);
  }
  for (const auto& entry : entries) {
    const std::lock_guard lock(entry->mutex);
    look(*entry);
  }
  return revision_;
}

// Under the entry's mutex.
void DecodingLists::look(Known& entry) {
  const auto now = clock_();
  if (entry.stamp && now - entry.checked < kCheckInterval) return;
  entry.checked = now;
  const FileStamp stamp = stampAt(root_.resolve(decodingListPath(entry.cd, entry.co)));
  if (entry.stamp && *entry.stamp != stamp) {
    entry.unusable = false;
    entry.list.reset();
    ++revision_;
  }
  entry.stamp = stamp;
}

std::shared_ptr<const DecodingList> DecodingLists::asItIs(Known& entry) {
  const std::lock_guard lock(entry.mutex);
  look(entry);  // before reading: a change while the file is read shows at the next look
  auto list = entry.list.lock();
  if (list || entry.unusable) return list;
  if (auto read = DecodingList::load(root_, entry.cd, entry.co))
    list = std::make_shared<const DecodingList>(*std::move(read));
  entry.unusable = !list;
  entry.list = list;
  return list;
}

}  // namespace tessaly
