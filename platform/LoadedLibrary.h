#pragma once

namespace tessaly {

enum class Library { kCurl, kZip, kHaru, kCrypto };

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

}  // namespace tessaly
