#pragma once

// The setters are checked by the types that FtpClient hands in; the library's own check wants its functions
// linked.
#define CURL_DISABLE_TYPECHECK
#include <curl/curl.h>

namespace tessaly {

// libcurl, loaded by the first transfer. Linked in the usual way its two dozen dependencies cost every run,
// also where no panel is near: 3 ms of the command-line twin's 4 (it takes 1.3 ms without) and 5 ms of a
// window's start.
struct CurlLibrary {
  // Null while the library cannot be loaded. Any thread.
  [[nodiscard]] static const CurlLibrary* get();

  decltype(&curl_global_init) globalInit = nullptr;
  decltype(&curl_easy_init) easyInit = nullptr;
  decltype(&curl_easy_setopt) easySetopt = nullptr;
  decltype(&curl_easy_getinfo) easyGetinfo = nullptr;
  decltype(&curl_easy_cleanup) easyCleanup = nullptr;
  decltype(&curl_multi_init) multiInit = nullptr;
  decltype(&curl_multi_add_handle) multiAddHandle = nullptr;
  decltype(&curl_multi_remove_handle) multiRemoveHandle = nullptr;
  decltype(&curl_multi_perform) multiPerform = nullptr;
  decltype(&curl_multi_poll) multiPoll = nullptr;
  decltype(&curl_multi_info_read) multiInfoRead = nullptr;
  decltype(&curl_multi_cleanup) multiCleanup = nullptr;
  decltype(&curl_slist_append) slistAppend = nullptr;
  decltype(&curl_slist_free_all) slistFreeAll = nullptr;

  // Of loadedFunctions().
  [[nodiscard]] bool load();
};

}  // namespace tessaly
