#include "platform/ZipLibrary.h"

#include "platform/LoadedLibrary.h"

namespace tessaly {

bool ZipLibrary::load() {
  const LoadedLibrary library(Library::kZip);
  return library.find("zip_source_buffer_create", sourceOfBytes) &&
         library.find("zip_source_keep", sourceKeep) && library.find("zip_source_free", sourceFree) &&
         library.find("zip_source_open", sourceOpen) && library.find("zip_source_stat", sourceStat) &&
         library.find("zip_source_read", sourceRead) && library.find("zip_source_close", sourceClose) &&
         library.find("zip_open_from_source", open) && library.find("zip_close", close) &&
         library.find("zip_discard", discard) && library.find("zip_file_add", add) &&
         library.find("zip_set_file_compression", setCompression) &&
         library.find("zip_file_set_dostime", setTime) &&
         library.find("zip_file_set_external_attributes", setAttributes) &&
         library.find("zip_file_get_external_attributes", getAttributes) &&
         library.find("zip_get_num_entries", countOfEntries) && library.find("zip_stat_index", stat) &&
         library.find("zip_fopen_index", openFile) && library.find("zip_fread", readFile) &&
         library.find("zip_fclose", closeFile);
}

const ZipLibrary* ZipLibrary::get() { return loadedFunctions<ZipLibrary>(); }

}  // namespace tessaly
