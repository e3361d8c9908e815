# Two thirds of a compilation without optimisation are the headers of the libraries, so the asan preset reads them
# once a room or program. GCC's builds go without: it forgets which headers are the system's and warns of them.
option(TESSALY_PRECOMPILE "Read the libraries' headers once a room or program (clang)" OFF)
if(TESSALY_PRECOMPILE)
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")  # ccache compares contents
endif()

# tessaly_precompile(TARGET HEADERS...): the standard library's headers and the given ones.
function(tessaly_precompile target)
  if(TESSALY_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE
      <algorithm> <array> <atomic> <charconv> <chrono> <cstdint> <cstdio> <filesystem> <fstream> <functional> <map>
      <memory> <mutex> <optional> <set> <string> <string_view> <system_error> <thread> <vector> ${ARGN})
  endif()
endfunction()
