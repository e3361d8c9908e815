# tessaly_resource(PROGRAM DESCRIPTION): what the system shows of a program (icon, version) and does for it (long paths,
# the screen's own size, characters in UTF-8).
enable_language(RC)
set(windows_packaging ${CMAKE_SOURCE_DIR}/packaging/windows)
set(icon ${CMAKE_BINARY_DIR}/tessaly.ico)
set(icon_pictures)
foreach(size 16 24 32 48 64 256)
  list(APPEND icon_pictures ${CMAKE_SOURCE_DIR}/resources/icons/tessaly-${size}.png)
endforeach()
add_custom_command(OUTPUT ${icon} DEPENDS ${icon_pictures} ${windows_packaging}/make_icon.py
  COMMAND /usr/bin/python3 ${windows_packaging}/make_icon.py ${icon} ${icon_pictures})
add_custom_target(windows_icon DEPENDS ${icon})

function(tessaly_resource program description)
  set(manifest ${windows_packaging}/program.manifest)
  set(resource ${CMAKE_BINARY_DIR}/${program}.rc)
  configure_file(${windows_packaging}/program.rc.in ${resource} @ONLY)
  set_source_files_properties(${resource} PROPERTIES OBJECT_DEPENDS "${icon};${manifest}")
  target_sources(${program} PRIVATE ${resource})
  add_dependencies(${program} windows_icon)
endfunction()
