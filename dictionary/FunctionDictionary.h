#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/FunctionTemplate.h"
#include "dictionary/SegmentFamily.h"

namespace tessaly {

class FunctionDictionary;

// One concrete function: a light handle (copy it freely) into the dictionary, which outlives it. The name is stored
// once; the other texts are put together from the template at each call, so a function costs little more than its
// name.
class FunctionRecord {
 public:
  [[nodiscard]] std::string_view name() const;
  [[nodiscard]] std::string sid() const;          // empty for incremental functions; the name of the current value
  [[nodiscard]] std::string group() const;        // destination name; empty for incremental functions
  [[nodiscard]] std::string description() const;  // the display text
  [[nodiscard]] const std::string& longDescription() const { return definition().longDescription; }
  [[nodiscard]] FunctionSource source() const { return definition().source; }
  [[nodiscard]] const FunctionTemplate& definition() const;

  // True when the sid is empty, whatever the reason: float values are then fixed point (value × 1024).
  [[nodiscard]] bool incremental() const;

  // Place in registration order.
  [[nodiscard]] std::size_t index() const { return index_; }

 private:
  friend class FunctionDictionary;
  FunctionRecord(const FunctionDictionary* dictionary, std::uint32_t index)
      : dictionary_(dictionary), index_(index) {}

  const FunctionDictionary* dictionary_;
  std::uint32_t index_;
};

// Every panel function that the editors can offer. Written by one loader thread before the hand-over message, only
// read afterwards; no lock. Never cleared.
class FunctionDictionary {
 public:
  FunctionDictionary();
  ~FunctionDictionary();
  FunctionDictionary(const FunctionDictionary&) = delete;
  FunctionDictionary& operator=(const FunctionDictionary&) = delete;

  // Building. A key that is already there keeps its first entry. A template is expanded with the families known at
  // this moment; one that names an unknown family adds only to the template count.
  void add(IndexedFamily family);
  void add(EnumFamily family);
  void add(AliasEntry entry);
  void add(FunctionTemplate definition);

  [[nodiscard]] std::size_t templateCount() const;
  [[nodiscard]] std::size_t functionCount() const;  // duplicates included
  [[nodiscard]] std::string summary() const;        // "Number of FIDs: 12/3456"

  // Functions in registration order, duplicates included.
  [[nodiscard]] FunctionRecord function(std::size_t index) const;
  [[nodiscard]] std::string_view name(std::size_t index) const;

  // By exact concrete name; of duplicates the first.
  [[nodiscard]] std::optional<FunctionRecord> find(std::string_view name) const;

  // The first function, in registration order, whose sid equals `sid` (not empty).
  [[nodiscard]] std::optional<FunctionRecord> findBySid(std::string_view sid) const;

  [[nodiscard]] const IndexedFamily* indexedFamily(std::string_view name) const;
  [[nodiscard]] const EnumFamily* enumFamily(std::string_view name) const;
  [[nodiscard]] const std::map<std::string, EnumFamily, std::less<>>& enumFamilies() const;
  [[nodiscard]] const AliasEntry* alias(std::string_view segment) const;
  [[nodiscard]] const std::map<std::string, AliasEntry, std::less<>>& aliases() const;

  // Bytes held for the concrete functions beyond the templates.
  [[nodiscard]] std::size_t functionBytes() const;

 private:
  friend class FunctionRecord;
  struct Store;
  std::unique_ptr<Store> store_;
};

}  // namespace tessaly
