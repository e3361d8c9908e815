#pragma once

#include <dlfcn.h>

namespace tessaly {

// A library that is loaded when it is first needed, by the name of its stable interface, and never unloaded.
class LoadedLibrary {
 public:
  explicit LoadedLibrary(const char* name) : library_(dlopen(name, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE)) {}

  // False without the library, and for a function that it has not.
  template <class Function>
  [[nodiscard]] bool find(const char* name, Function& function) const {
    function = library_ == nullptr ? nullptr : reinterpret_cast<Function>(dlsym(library_, name));
    return function != nullptr;
  }

 private:
  void* library_;
};

}  // namespace tessaly
