# cmake --install: libvelora.so, velora.pc, the CMake package, the headers, which keep their paths in
# the tree below include/velora-1, and the tool. Each has the component of its package: see
# Package.cmake.

if(NOT TARGET velora)
  return()
endif()
include(CMakePackageConfigHelpers)

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/velora)
set(headers ${CMAKE_INSTALL_INCLUDEDIR}/velora-1)

install(TARGETS velora EXPORT velora-targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
                NAMELINK_COMPONENT development)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)
install(EXPORT velora-targets NAMESPACE velora:: DESTINATION ${package})
configure_package_config_file(cmake/velora-config.cmake.in ${PROJECT_BINARY_DIR}/velora-config.cmake
                              INSTALL_DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/velora-config-version.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/velora-config.cmake
              ${PROJECT_BINARY_DIR}/velora-config-version.cmake DESTINATION ${package})
file(RELATIVE_PATH VELORA_PREFIX_FROM_PC ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
     ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/velora.pc.in ${PROJECT_BINARY_DIR}/velora.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/velora.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The caller's header, the exported classes, and the ink door with the interfaces behind it: what a
# program outside can use, and nothing else.
function(velora_install_headers folder)
  file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
  list(FILTER files EXCLUDE REGEX "/(arithmetic|message)\\.h$")
  install(FILES ${files} DESTINATION ${headers}/${folder})
endfunction()

install(FILES ${PROJECT_BINARY_DIR}/include/velora/version.h DESTINATION ${headers}/velora)
install(DIRECTORY include/velora DESTINATION ${headers} FILES_MATCHING PATTERN "*.h")
velora_install_headers(velora/frontend/toolkit)
velora_install_headers(velora/wisp/api)
velora_install_headers(velora/wisp/api/components)
velora_install_headers(velora/common/api)
velora_install_headers(velora/common)
velora_install_headers(plinth/core/api)
install(FILES velora/frontend/door/ReconstructTable.h velora/frontend/door/Velora.h
        DESTINATION ${headers}/velora/frontend/door)
install(FILES plinth/runtime/api/BootRecord.h plinth/runtime/api/Configuration.h
              plinth/runtime/api/raise.h DESTINATION ${headers}/plinth/runtime/api)

if(TARGET tool_velora)
  # With its manual pages and completion, where it is built: a build of the library alone installs
  # without it.
  install(TARGETS tool_velora RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools OPTIONAL)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/pages/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
          COMPONENT tools OPTIONAL FILES_MATCHING PATTERN "*.1.gz")
  install(FILES ${PROJECT_BINARY_DIR}/pages/velora.bash COMPONENT tools OPTIONAL
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME velora)
endif()
install(FILES LICENSE CHANGELOG.md README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
include(cmake/Package.cmake)
