#include "platform/CurlLibrary.h"

#include <dlfcn.h>

namespace tessaly {

namespace {

constexpr const char* kLibrary = "libcurl.so.4";  // the name of its stable interface

template <class Function>
bool find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  return function != nullptr;
}

}  // namespace

bool CurlLibrary::load() {
  void* const library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  return library != nullptr && find(library, "curl_global_init", globalInit) &&
         find(library, "curl_easy_init", easyInit) && find(library, "curl_easy_setopt", easySetopt) &&
         find(library, "curl_easy_getinfo", easyGetinfo) && find(library, "curl_easy_cleanup", easyCleanup) &&
         find(library, "curl_multi_init", multiInit) &&
         find(library, "curl_multi_add_handle", multiAddHandle) &&
         find(library, "curl_multi_remove_handle", multiRemoveHandle) &&
         find(library, "curl_multi_perform", multiPerform) && find(library, "curl_multi_poll", multiPoll) &&
         find(library, "curl_multi_info_read", multiInfoRead) &&
         find(library, "curl_multi_cleanup", multiCleanup) &&
         find(library, "curl_slist_append", slistAppend) &&
         find(library, "curl_slist_free_all", slistFreeAll) && globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK;
}

const CurlLibrary* CurlLibrary::get() {
  static const CurlLibrary* const loaded = []() -> const CurlLibrary* {
    static CurlLibrary library;
    return library.load() ? &library : nullptr;
  }();
  return loaded;
}

}  // namespace tessaly
