#include "platform/Installation.h"

#include <system_error>

namespace tessaly {
namespace {

constexpr const char* kRunningProgram = "/proc/self/exe";
constexpr std::string_view kSiteFromProgram = TESSALY_SITE_FROM_PROGRAM;  // relative to the program's folder

}  // namespace

std::string_view programVersion() { return TESSALY_VERSION; }

std::filesystem::path installedSiteFolder() {
  std::error_code failed;
  const std::filesystem::path program = std::filesystem::read_symlink(kRunningProgram, failed);
  if (failed) return {};
  std::filesystem::path folder = (program.parent_path() / kSiteFromProgram).lexically_normal();
  return std::filesystem::is_directory(folder, failed) ? folder : std::filesystem::path();
}

}  // namespace tessaly
