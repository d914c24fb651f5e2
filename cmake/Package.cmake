# cpack: a plain tarball, and the Debian packages libvelora1, libvelora-dev and velora-tools, the
# last for native builds that have the tool. What they depend on is what Debian 12 has.

# No address ends in .invalid: whoever gives packages away names one that is read.
set(VELORA_MAINTAINER "libvelora developers <developers@libvelora.invalid>" CACHE STRING
    "Who answers for the packages: a name and a mail address")

set(CPACK_PACKAGE_VENDOR "libvelora developers")
set(CPACK_PACKAGE_CONTACT "${VELORA_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "reconstruction of printer colour tables")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_GENERATOR TGZ DEB)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL runtime development)
if(TARGET tool_velora)
  list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(CMAKE_SYSTEM_PROCESSOR MATCHES "^arm")
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# velora_package(COMPONENT NAME SECTION DEPENDS TEXT...)
function(velora_package component name section depends)
  string(TOUPPER ${component} key)
  string(JOIN "\n" text ${ARGN})
  set(CPACK_COMPONENT_${key}_DESCRIPTION ${text} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS ${depends} PARENT_SCOPE)
  set(folder ${PROJECT_BINARY_DIR}/packaging/${name})
  configure_file(cmake/copyright.in ${folder}/copyright COPYONLY)
  file(WRITE ${folder}/changelog.in
       "velora (@PROJECT_VERSION@) unstable; urgency=medium\n\n  * See CHANGELOG.md.\n\n"
       " -- @CPACK_PACKAGE_CONTACT@  Sun, 22 Nov 2026 00:00:00 +0000\n")
  configure_file(${folder}/changelog.in ${folder}/changelog @ONLY)
  execute_process(COMMAND gzip -9nkf changelog WORKING_DIRECTORY ${folder})
  install(FILES ${folder}/copyright ${folder}/changelog.gz
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
endfunction()

velora_package(
  runtime libvelora1 libs
  "libc6 (>= 2.34), libfftw3-single3 (>= 3.3.5), libgcc-s1, liblzma5, libssl3, libstdc++6 (>= 11), zlib1g"
  "Rebuilds a printer's colour tables, gray curves and fuser settings from"
  "compact packs. This package has the shared library.")
velora_package(
  development libvelora-dev libdevel
  "libvelora1 (= ${PROJECT_VERSION}), libfftw3-dev, liblzma-dev, libssl-dev, zlib1g-dev"
  "Rebuilds a printer's colour tables, gray curves and fuser settings from"
  "compact packs. This package has what a program is built with.")
velora_package(
  tools velora-tools graphics
  "libvelora1 (= ${PROJECT_VERSION}), libc6 (>= 2.34), libgcc-s1, liblcms2-2, libpng16-16, libstdc++6 (>= 11)"
  "Rebuilds a printer's colour tables, gray curves and fuser settings from"
  "compact packs. This package has the program that writes packs, reads"
  "them and calls the library.")

file(WRITE ${PROJECT_BINARY_DIR}/packaging/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/packaging/triggers)

# cpack takes what is built: without this it would build all tests first, for each machine.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
if(TARGET tool_velora)
  install(CODE "if(CMAKE_INSTALL_COMPONENT STREQUAL \"tools\" AND
                   NOT EXISTS \"$<TARGET_FILE:tool_velora>\")
                  message(FATAL_ERROR \"velora-tools needs the target tool_velora\")
                endif()" COMPONENT tools)
endif()

include(CPack)

# All packages of a build, in its folder packages.
add_custom_target(packages COMMAND ${CMAKE_CPACK_COMMAND} -B packages
                  WORKING_DIRECTORY ${PROJECT_BINARY_DIR} VERBATIM)
add_dependencies(packages velora)
if(TARGET tool_velora)
  add_dependencies(packages tool_velora)
endif()
