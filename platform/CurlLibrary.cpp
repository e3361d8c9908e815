#include "platform/CurlLibrary.h"

#include "platform/LoadedLibrary.h"

namespace tessaly {

bool CurlLibrary::load() {
  const LoadedLibrary library(Library::kCurl);
  return library.find("curl_global_init", globalInit) && library.find("curl_easy_init", easyInit) &&
         library.find("curl_easy_setopt", easySetopt) && library.find("curl_easy_getinfo", easyGetinfo) &&
         library.find("curl_easy_cleanup", easyCleanup) && library.find("curl_multi_init", multiInit) &&
         library.find("curl_multi_add_handle", multiAddHandle) &&
         library.find("curl_multi_remove_handle", multiRemoveHandle) &&
         library.find("curl_multi_perform", multiPerform) && library.find("curl_multi_poll", multiPoll) &&
         library.find("curl_multi_info_read", multiInfoRead) &&
         library.find("curl_multi_cleanup", multiCleanup) && library.find("curl_slist_append", slistAppend) &&
         library.find("curl_slist_free_all", slistFreeAll) && globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK;
}

const CurlLibrary* CurlLibrary::get() { return loadedFunctions<CurlLibrary>(); }

}  // namespace tessaly
