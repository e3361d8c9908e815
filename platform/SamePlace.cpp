#include <system_error>

#include "platform/SiteRoot.h"

namespace tessaly {

bool SiteRoot::same(std::string_view first, std::string_view second) const {
  const std::filesystem::path a = resolve(first);
  const std::filesystem::path b = resolve(second);
  if (a.empty() || b.empty()) return false;
  if (a == b) return true;
  std::error_code error;  // folders that are links lead to the same place too
  return a.filename() == b.filename() && std::filesystem::equivalent(a.parent_path(), b.parent_path(), error);
}

}  // namespace tessaly
