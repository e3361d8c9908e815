#pragma once

#include <filesystem>
#include <string_view>

#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// As SiteRoot::resolve, for whoever takes "not there" for a fact: a failure when a folder on the way cannot
// be listed at the moment, so that nobody knows whether it holds the name in another spelling.
[[nodiscard]] Expected<std::filesystem::path> placeOf(const SiteRoot& root, std::string_view sitePath);

// Of a failed read: there is surely no such file, rather than one that cannot be read now.
[[nodiscard]] inline bool isNothing(const Failure& failure) {
  return failure.kind == Failure::Kind::kMissing || failure.kind == Failure::Kind::kInTheWay;
}

}  // namespace tessaly
