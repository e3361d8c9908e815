#pragma once

#include "platform/ThreadAnnotations.h"

namespace tessaly {

enum class Library { kCurl, kZip, kHaru, kCrypto, kFonts };

// A library that is loaded when it is first needed, by the name of its stable interface, and never unloaded.
class LoadedLibrary {
 public:
  explicit LoadedLibrary(Library library);

  // False without the library, and for a function that it has not.
  template <class Function>
  [[nodiscard]] bool find(const char* name, Function& function) const {
    function = reinterpret_cast<Function>(place(name));
    return function != nullptr;
  }

 private:
  [[nodiscard]] void* place(const char* name) const;

  void* library_;
};

// The functions of a library, whose `load` finds them. Null while that fails: it is tried anew each time, as
// it may have failed for want of memory or descriptors, and a library may be installed meanwhile. Any thread.
template <class Functions>
[[nodiscard]] const Functions* loadedFunctions() {
  static Mutex mutex;
  static Functions functions;
  static bool there = false;
  const MutexLock guard(mutex);
  if (!there) there = functions.load();
  return there ? &functions : nullptr;
}

}  // namespace tessaly
