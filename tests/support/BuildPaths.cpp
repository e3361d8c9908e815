#include "tests/support/BuildPaths.h"

namespace tessaly {

std::string sourcePath(const std::string& below) { return TESSALY_SOURCE_DIR "/" + below; }

std::string programPath(const std::string& name) { return TESSALY_BINARY_DIR "/" + name; }

}  // namespace tessaly
