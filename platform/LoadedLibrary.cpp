#include "platform/LoadedLibrary.h"

#include <dlfcn.h>

namespace tessaly {
namespace {

const char* nameOf(Library library) {
  switch (library) {
    case Library::kCurl:
      return "libcurl.so.4";
    case Library::kZip:
      return "libzip.so.4";
    case Library::kHaru:
      return "libhpdf-2.3.0.so";
    case Library::kCrypto:
      return "libcrypto.so.3";
    case Library::kFonts:
      return "libfontconfig.so.1";
  }
  return "";
}

}  // namespace

LoadedLibrary::LoadedLibrary(Library library)
    : library_(dlopen(nameOf(library), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE)) {}

void* LoadedLibrary::place(const char* name) const {
  return library_ == nullptr ? nullptr : dlsym(library_, name);
}

}  // namespace tessaly
