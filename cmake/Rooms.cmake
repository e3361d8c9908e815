# Compiler settings that every target of the project shares.
add_library(tessaly_settings INTERFACE)
target_compile_options(tessaly_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Wconversion -Wno-sign-conversion
  -Wformat=2 -Wformat-security
  # A group shows names that no compiler sees together else; not those within a function.
  $<IF:$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>,$<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>,-Wshadow>)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  target_compile_options(tessaly_settings INTERFACE -Wthread-safety)  # platform/ThreadAnnotations.h
endif()
if(TESSALY_WERROR)
  target_compile_options(tessaly_settings INTERFACE -Werror)
endif()
if(TESSALY_SANITIZE)
  target_compile_options(tessaly_settings INTERFACE -fsanitize=${TESSALY_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  target_link_options(tessaly_settings INTERFACE -fsanitize=${TESSALY_SANITIZE})
endif()
if(TESSALY_COVERAGE)
  target_compile_options(tessaly_settings INTERFACE -fprofile-instr-generate -fcoverage-mapping)
  target_link_options(tessaly_settings INTERFACE -fprofile-instr-generate)
endif()
target_include_directories(tessaly_settings INTERFACE ${CMAKE_SOURCE_DIR})

# tessaly_of_this_system(LIST): of a source and its twin, XWindows.cpp beside X.cpp, the one for the system that is
# built for.
function(tessaly_of_this_system list)
  set(chosen ${${list}})
  if(WIN32)
    foreach(twin ${chosen})
      if(twin MATCHES "Windows\\.cpp$")
        string(REGEX REPLACE "Windows\\.cpp$" ".cpp" other ${twin})
        list(REMOVE_ITEM chosen ${other})
      endif()
    endforeach()
  else()
    list(FILTER chosen EXCLUDE REGEX "Windows\\.(cpp|h)$")
  endif()
  set(${list} ${chosen} PARENT_SCOPE)
endfunction()

# tessaly_room(NAME LINKS...): one static library of all sources in the calling folder.
function(tessaly_room name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  tessaly_of_this_system(sources)
  if(NOT sources)
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE tessaly_settings ${ARGN})
    return()
  endif()
  add_library(${name} STATIC ${sources})
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(${name} PUBLIC tessaly_settings ${ARGN})
  if(Qt6::Widgets IN_LIST ARGN)
    tessaly_precompile(${name} <QtWidgets>)
  elseif(nlohmann_json::nlohmann_json IN_LIST ARGN)
    tessaly_precompile(${name} <nlohmann/json.hpp>)
  else()
    tessaly_precompile(${name})
  endif()
  if(TESSALY_GROUPED STREQUAL ON OR name IN_LIST TESSALY_GROUPED)
    tessaly_grouped(${name} ${sources})
  endif()
endfunction()

# tessaly_program(NAME LINKS...): main.cpp of the calling folder on top of the given libraries.
function(tessaly_program name)
  add_executable(${name} ${CMAKE_CURRENT_SOURCE_DIR}/main.cpp)
  target_link_libraries(${name} PRIVATE tessaly_settings ${ARGN})
endfunction()
