#pragma once

#include <zip.h>

namespace tessaly {

// libzip, loaded by the first archive: linked in the usual way it and the library of ciphers behind it cost
// every run of the command-line twin 0.9 ms of its 1.4, also where no archive is near.
struct ZipLibrary {
  // Null while the library cannot be loaded. Any thread.
  [[nodiscard]] static const ZipLibrary* get();

  decltype(&zip_source_buffer_create) sourceOfBytes = nullptr;
  decltype(&zip_source_keep) sourceKeep = nullptr;
  decltype(&zip_source_free) sourceFree = nullptr;
  decltype(&zip_source_open) sourceOpen = nullptr;
  decltype(&zip_source_stat) sourceStat = nullptr;
  decltype(&zip_source_read) sourceRead = nullptr;
  decltype(&zip_source_close) sourceClose = nullptr;
  decltype(&zip_open_from_source) open = nullptr;
  decltype(&zip_close) close = nullptr;
  decltype(&zip_discard) discard = nullptr;
  decltype(&zip_file_add) add = nullptr;
  decltype(&zip_set_file_compression) setCompression = nullptr;
  decltype(&zip_file_set_dostime) setTime = nullptr;
  decltype(&zip_file_set_external_attributes) setAttributes = nullptr;
  decltype(&zip_file_get_external_attributes) getAttributes = nullptr;
  decltype(&zip_get_num_entries) countOfEntries = nullptr;
  decltype(&zip_stat_index) stat = nullptr;
  decltype(&zip_fopen_index) openFile = nullptr;
  decltype(&zip_fread) readFile = nullptr;
  decltype(&zip_fclose) closeFile = nullptr;

  // Of loadedFunctions().
  [[nodiscard]] bool load();
};

}  // namespace tessaly
