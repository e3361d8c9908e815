# Run by cpack once the files are in place: adds the packages of the libraries that the three programs need. cpack's
# own way looks at each file of the sample site, which takes far longer than all the rest.
set(folder ${CPACK_TOPLEVEL_DIRECTORY}/libraries)
file(WRITE ${folder}/debian/control "Source: tessaly\n\nPackage: tessaly\nArchitecture: any\n")
file(GLOB programs ${CPACK_TEMPORARY_DIRECTORY}/usr/bin/*)
execute_process(COMMAND dpkg-shlibdeps -O ${programs} WORKING_DIRECTORY ${folder} OUTPUT_VARIABLE libraries
  COMMAND_ERROR_IS_FATAL ANY)
if(NOT libraries MATCHES "shlibs:Depends=([^\n]+)")
  message(FATAL_ERROR "dpkg-shlibdeps names no libraries: ${libraries}")
endif()
set(CPACK_DEBIAN_PACKAGE_DEPENDS "${CMAKE_MATCH_1}, ${CPACK_DEBIAN_PACKAGE_DEPENDS}")
