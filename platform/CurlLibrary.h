#pragma once

// The setters are checked by the types that FtpClient hands in; the library's own check wants its functions
// linked.
#define CURL_DISABLE_TYPECHECK
#include <curl/curl.h>

namespace tessaly {

// libcurl, loaded by the first transfer. Linked in the usual way its two dozen dependencies would cost every
// start of the program some 20 ms, also where no panel is near.
struct CurlLibrary {
  // Null when the library is not installed or cannot be used. Thread-safe; loads once, never unloads.
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

 private:
  [[nodiscard]] bool load();
};

}  // namespace tessaly
