#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "dictionary/FunctionTemplate.h"
#include "dictionary/SegmentFamily.h"

namespace tessaly {

class FunctionDictionary;

// Bounds of the expansion, far above any real site: what all templates together may expand to (combinations,
// the left out ones included) and the bytes of the concrete names. A template that would go beyond is left
// out whole.
inline constexpr std::size_t kMostFunctions = 4'000'000;
inline constexpr std::size_t kMostNameBytes = std::size_t{256} * 1024 * 1024;

// Bytes of a template's sid above which findBySid does not know its functions.
inline constexpr std::size_t kLongestSid = 1024;

// One concrete function: a light handle (copy it freely) into the dictionary, which outlives it. The name is
// stored once; the other texts are put together from the template at each call, so a function costs little
// more than its name. In the texts every reference to a segment of the name template ("$me") gives way to the
// chosen value.
class FunctionRecord {
 public:
  [[nodiscard]] std::string_view name() const;
  [[nodiscard]] std::string sid() const;    // empty for incremental functions; the name of the current value
  [[nodiscard]] std::string group() const;  // destination name; empty for incremental functions
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

// Every panel function that the editors can offer. Written by one loader thread before the hand-over message,
// only read afterwards, then from any number of threads; no lock. Never cleared.
class FunctionDictionary {
 public:
  FunctionDictionary();
  ~FunctionDictionary();
  FunctionDictionary(const FunctionDictionary&) = delete;
  FunctionDictionary& operator=(const FunctionDictionary&) = delete;

  // Building. A key that is already there keeps its first entry. A template is expanded with the families
  // known at this moment, the first segment varying slowest; one that names an unknown family, or expands
  // beyond the bounds, adds only to the template count.
  void add(IndexedFamily family);
  void add(EnumFamily family);
  void add(AliasEntry entry);
  void add(FunctionTemplate definition);

  // At the end of the building: gives back the memory kept for growth. More may be added all the same.
  void finish();

  // Makes the table of names, which the first find() would make otherwise, whatever its thread.
  void prepareFind() const;

  [[nodiscard]] std::size_t templateCount() const;  // every template handed over
  [[nodiscard]] std::size_t functionCount() const;  // duplicates included
  [[nodiscard]] std::string summary() const;        // "Number of FIDs: 12/3456"

  // Templates that were left out because of the bounds.
  [[nodiscard]] std::size_t leftOutCount() const;

  // Functions in registration order, duplicates included.
  [[nodiscard]] FunctionRecord function(std::size_t index) const;
  [[nodiscard]] std::string_view name(std::size_t index) const;

  // All names in registration order in one piece, each followed by a line feed, so that one pass searches
  // them all. UTF-8; a name may contain anything, so ends are told by the offsets.
  [[nodiscard]] std::string_view allNames() const;
  [[nodiscard]] std::size_t nameOffset(std::size_t index) const;  // functionCount() gives the end of the last
  [[nodiscard]] std::size_t functionAtOffset(std::size_t offset) const;  // offset < allNames().size()

  // By exact concrete name; of duplicates the first.
  [[nodiscard]] std::optional<FunctionRecord> find(std::string_view name) const;

  // The first function, in registration order, whose sid equals `sid` (not empty). The table behind it is
  // built by the first call, whatever its thread.
  [[nodiscard]] std::optional<FunctionRecord> findBySid(std::string_view sid) const;

  [[nodiscard]] const IndexedFamily* indexedFamily(std::string_view name) const;
  [[nodiscard]] const EnumFamily* enumFamily(std::string_view name) const;
  [[nodiscard]] const std::map<std::string, EnumFamily, std::less<>>& enumFamilies() const;
  [[nodiscard]] const AliasEntry* alias(std::string_view segment) const;
  [[nodiscard]] const std::map<std::string, AliasEntry, std::less<>>& aliases() const;

  // Bytes held for the concrete functions beyond the templates once finished, the table of sids left out.
  [[nodiscard]] std::size_t functionBytes() const;

 private:
  friend class FunctionRecord;
  struct Store;
  std::unique_ptr<Store> store_;
};

}  // namespace tessaly
