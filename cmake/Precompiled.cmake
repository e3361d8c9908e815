# More than half of a compilation are the headers of the libraries, so a build that runs the tests reads them once: for the
# plain rooms, for those with a window, and for the tests of both. That of preset debug goes without, as what is
# precompiled hides a missing #include.
option(TESSALY_PRECOMPILE "Read the libraries' headers once" OFF)
if(TESSALY_PRECOMPILE AND CMAKE_CXX_COMPILER_ID MATCHES Clang)
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")  # ccache compares contents
elseif(TESSALY_PRECOMPILE)
  # GCC forgets that the standard library's headers are the system's.
  add_compile_options(-Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
endif()

# tessaly_precompile(TARGET HEADERS...): the standard library's headers and the given ones; the first target that asks
# for these has them made, the others use them.
function(tessaly_precompile target)
  if(NOT TESSALY_PRECOMPILE)
    return()
  endif()
  get_property(first GLOBAL PROPERTY "tessaly_precompiled ${ARGN}")
  if(first)
    target_precompile_headers(${target} REUSE_FROM ${first})
    return()
  endif()
  set_property(GLOBAL PROPERTY "tessaly_precompiled ${ARGN}" ${target})
  target_precompile_headers(${target} PRIVATE
    <algorithm> <array> <atomic> <charconv> <chrono> <cstdint> <cstdio> <filesystem> <fstream> <functional> <map>
    <memory> <mutex> <optional> <set> <string> <string_view> <system_error> <thread> <vector> ${ARGN})
endfunction()
