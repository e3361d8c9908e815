#include <system_error>

#include "platform/Installation.h"
#include "platform/OpenFileWindows.h"

namespace tessaly {
namespace {

constexpr std::string_view kSiteFromProgram = TESSALY_SITE_FROM_PROGRAM;  // relative to the program's folder
constexpr DWORD kLongestPath = 32'768;                                    // characters

}  // namespace

std::string_view programVersion() { return TESSALY_VERSION; }

std::filesystem::path installedSiteFolder() {
  std::wstring program(kLongestPath, L'\0');
  program.resize(::GetModuleFileNameW(nullptr, program.data(), kLongestPath));
  if (program.empty()) return {};
  std::error_code failed;
  std::filesystem::path folder =
      (std::filesystem::path(program).parent_path() / kSiteFromProgram).lexically_normal();
  return std::filesystem::is_directory(folder, failed) ? folder : std::filesystem::path();
}

}  // namespace tessaly
