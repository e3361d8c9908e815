#include "platform/LoadedLibrary.h"
#include "platform/OpenFileWindows.h"

namespace tessaly {
namespace {

const wchar_t* nameOf(Library library) {
  switch (library) {
    case Library::kCurl:
      return L"libcurl.dll";
    case Library::kZip:
      return L"libzip.dll";
    case Library::kHaru:
      return L"libhpdf.dll";
    case Library::kCrypto:
      return L"";  // the system's own sums are used
    case Library::kFonts:
      return L"";  // the toolkit has its own way
  }
  return L"";
}

}  // namespace

// Beside the program and in the system's folder: nobody else's of that name is run.
LoadedLibrary::LoadedLibrary(Library library)
    : library_(::LoadLibraryExW(nameOf(library), nullptr,
                                LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32)) {}

void* LoadedLibrary::place(const char* name) const {
  return library_ == nullptr
             ? nullptr
             : reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(library_), name));
}

}  // namespace tessaly
