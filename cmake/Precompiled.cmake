# More than half of a compilation are the headers of the libraries, so the presets of the checks read them once a room
# or program. A build to work with goes without: what is precompiled hides a missing #include, and debug information
# takes the gain away.
option(TESSALY_PRECOMPILE "Read the libraries' headers once a room or program" OFF)
if(TESSALY_PRECOMPILE AND CMAKE_CXX_COMPILER_ID MATCHES Clang)
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")  # ccache compares contents
elseif(TESSALY_PRECOMPILE)
  # GCC forgets that the standard library's headers are the system's.
  add_compile_options(-Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
endif()

# tessaly_precompile(TARGET HEADERS...): the standard library's headers and the given ones.
function(tessaly_precompile target)
  if(TESSALY_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE
      <algorithm> <array> <atomic> <charconv> <chrono> <cstdint> <cstdio> <filesystem> <fstream> <functional> <map>
      <memory> <mutex> <optional> <set> <string> <string_view> <system_error> <thread> <vector> ${ARGN})
  endif()
endfunction()
