# Most of a compilation goes into the headers of the libraries, so the builds of .ci/run compile the files of a room in
# groups, which takes half the time: all of them, or those that take longest, beside what is no room. With TESTS
# no room, so that a change costs one file. Preset debug compiles each file by itself.
set(TESSALY_GROUPED OFF CACHE STRING "What is compiled in groups of files: OFF, TESTS, the names of some rooms, or ON")

# tessaly_grouped(TARGET SOURCES...): none of a group shares a file-local name with another that could see it.
function(tessaly_grouped target)
  if(NOT TESSALY_GROUPED)
    return()
  endif()
  set(sources ${ARGN})
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  execute_process(COMMAND /usr/bin/python3 ${CMAKE_SOURCE_DIR}/tools/source_groups.py ${sources}
    OUTPUT_VARIABLE lines COMMAND_ERROR_IS_FATAL ANY OUTPUT_STRIP_TRAILING_WHITESPACE)
  string(REPLACE "\n" ";" lines "${lines}")
  foreach(line ${lines})
    string(REGEX MATCH "^([0-9]+) (.*)$" line "${line}")
    set_source_files_properties(${CMAKE_MATCH_2} PROPERTIES UNITY_GROUP ${target}_${CMAKE_MATCH_1})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  # In a group every file is an included one, whose file-local names this compiler takes for a header's.
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
  endif()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${sources} ${CMAKE_SOURCE_DIR}/tools/source_groups.py)
endfunction()
