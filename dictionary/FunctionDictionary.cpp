#include "dictionary/FunctionDictionary.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "dictionary/DictionaryStore.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

template <typename Map>
const typename Map::mapped_type* entryOf(const Map& map, std::string_view key) {
  const auto found = map.find(key);
  return found == map.end() ? nullptr : &found->second;
}

template <typename Container>
void reserveGeometric(Container& container, std::size_t more) {
  const std::size_t needed = container.size() + more;
  if (needed > container.capacity()) container.reserve(std::max(needed, container.capacity() * 2));
}

}  // namespace

FunctionDictionary::FunctionDictionary() : store_(std::make_unique<Store>()) {}
FunctionDictionary::~FunctionDictionary() = default;

void FunctionDictionary::add(IndexedFamily family) {
  std::string key = family.name;
  store_->families.indexed.try_emplace(std::move(key), std::move(family));
}

void FunctionDictionary::add(EnumFamily family) {
  std::string key = family.name;
  store_->families.enumerated.try_emplace(std::move(key), std::move(family));
}

void FunctionDictionary::add(AliasEntry entry) {
  std::string key = entry.segment;
  store_->aliases.try_emplace(std::move(key), std::move(entry));
}

void FunctionDictionary::add(FunctionTemplate definition) {
  Store& store = *store_;
  ++store.templateCount;
  std::optional<NamePattern> pattern = NamePattern::parse(definition.name, store.families);
  if (!pattern || pattern->combinations() == 0) return;
  if (pattern->combinations() > kMostFunctions - store.combinations) {
    ++store.leftOutCount;
    return;
  }
  const auto count = static_cast<std::size_t>(pattern->combinations());
  const std::size_t bytes = count * (pattern->longestName(definition.name) + 1);
  if (bytes > kMostNameBytes - store.names.size()) {
    ++store.leftOutCount;
    return;
  }
  store.combinations += count;
  reserveGeometric(store.names, bytes);
  reserveGeometric(store.offsets, count);
  store.expand({std::move(definition), std::move(*pattern)});
}

void FunctionDictionary::prepareFind() const { static_cast<void>(store_->nameTable()); }

void FunctionDictionary::finish() {
  store_->names.shrink_to_fit();
  store_->offsets.shrink_to_fit();
  store_->runs.shrink_to_fit();
}

std::size_t FunctionDictionary::templateCount() const { return store_->templateCount; }
std::size_t FunctionDictionary::functionCount() const { return store_->functionCount(); }
std::size_t FunctionDictionary::leftOutCount() const { return store_->leftOutCount; }

std::string FunctionDictionary::summary() const {
  return format("Number of FIDs: %d/%d", static_cast<int>(templateCount()),
                static_cast<int>(functionCount()));
}

FunctionRecord FunctionDictionary::function(std::size_t index) const {
  assert(index < functionCount());
  return {this, static_cast<std::uint32_t>(index)};
}

std::string_view FunctionDictionary::name(std::size_t index) const {
  assert(index < functionCount());
  return store_->nameOf(static_cast<std::uint32_t>(index));
}

std::string_view FunctionDictionary::allNames() const { return store_->names; }
std::size_t FunctionDictionary::nameOffset(std::size_t index) const { return store_->offsets[index]; }

std::size_t FunctionDictionary::functionAtOffset(std::size_t offset) const {
  return store_->offsets.lastUpTo(offset);
}

std::optional<FunctionRecord> FunctionDictionary::find(std::string_view name) const {
  const auto found = store_->find(name);
  if (!found) return std::nullopt;
  return FunctionRecord(this, *found);
}

std::optional<FunctionRecord> FunctionDictionary::findBySid(std::string_view sid) const {
  const auto found = sid.empty() ? std::nullopt : store_->findBySid(sid);
  if (!found) return std::nullopt;
  return FunctionRecord(this, *found);
}

const IndexedFamily* FunctionDictionary::indexedFamily(std::string_view name) const {
  return entryOf(store_->families.indexed, name);
}
const EnumFamily* FunctionDictionary::enumFamily(std::string_view name) const {
  return entryOf(store_->families.enumerated, name);
}
const std::map<std::string, EnumFamily, std::less<>>& FunctionDictionary::enumFamilies() const {
  return store_->families.enumerated;
}
const AliasEntry* FunctionDictionary::alias(std::string_view segment) const {
  return entryOf(store_->aliases, segment);
}
const std::map<std::string, AliasEntry, std::less<>>& FunctionDictionary::aliases() const {
  return store_->aliases;
}

std::size_t FunctionDictionary::functionBytes() const {
  return store_->names.capacity() + store_->offsets.bytes() + store_->runs.capacity() * sizeof(Store::Run) +
         store_->byName->indices.bytes();
}

}  // namespace tessaly
