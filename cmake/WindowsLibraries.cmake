# The libraries of a build for Windows, under the names that the rooms know them by; packaging/windows/build.sh makes
# them. libcurl, libzip and libharu are DLLs beside the program and are loaded by their first use.
set(TESSALY_WINDOWS_LIBRARIES "" CACHE PATH "Folder of the libraries that packaging/windows/build.sh has built")
set(CURL_INCLUDE_DIRS ${TESSALY_WINDOWS_LIBRARIES}/include)
set(LIBZIP_INCLUDE_DIRS ${CURL_INCLUDE_DIRS})
set(OPENSSL_INCLUDE_DIR ${CURL_INCLUDE_DIRS})
foreach(name PkgConfig::TINYXML=tinyxml GTest::gmock=gmock GTest::gtest_main=gtest_main)
  string(REPLACE "=" ";" name ${name})
  list(POP_BACK name file)
  add_library(${name} STATIC IMPORTED)
  set_target_properties(${name} PROPERTIES IMPORTED_LOCATION ${TESSALY_WINDOWS_LIBRARIES}/lib/lib${file}.a
    INTERFACE_INCLUDE_DIRECTORIES ${TESSALY_WINDOWS_LIBRARIES}/include)
endforeach()
set_target_properties(GTest::gtest_main PROPERTIES INTERFACE_LINK_LIBRARIES GTest::gmock)
set_target_properties(PkgConfig::TINYXML PROPERTIES INTERFACE_COMPILE_DEFINITIONS TIXML_USE_STL)
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
set_target_properties(nlohmann_json::nlohmann_json PROPERTIES
  INTERFACE_INCLUDE_DIRECTORIES ${TESSALY_WINDOWS_LIBRARIES}/include)

# The system's own names wherever it has two, the C library's by the standard's names and with its rules for printing.
target_compile_definitions(tessaly_settings INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00
  _POSIX_THREAD_SAFE_FUNCTIONS __USE_MINGW_ANSI_STDIO=1 _FILE_OFFSET_BITS=64)
# The compiler checks formats by the rules of the system's own printing, which is not used.
target_compile_options(tessaly_settings INTERFACE -Wno-format-security -Wno-format)
# One file a program, but for the libraries above.
target_link_options(tessaly_settings INTERFACE -static)
