# cmake --install: libvelora.so, velora.pc, the CMake package and the headers, which keep their
# paths in the tree below include/velora-1.

if(NOT TARGET velora)
  return()
endif()
include(CMakePackageConfigHelpers)

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/velora)
set(headers ${CMAKE_INSTALL_INCLUDEDIR}/velora-1)

install(TARGETS velora EXPORT velora-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT velora-targets NAMESPACE velora:: DESTINATION ${package})
configure_package_config_file(cmake/velora-config.cmake.in ${PROJECT_BINARY_DIR}/velora-config.cmake
                              INSTALL_DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/velora-config-version.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/velora-config.cmake
              ${PROJECT_BINARY_DIR}/velora-config-version.cmake DESTINATION ${package})
configure_file(cmake/velora.pc.in ${PROJECT_BINARY_DIR}/velora.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/velora.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The caller's header, the exported classes, and what the ink door's interfaces stand on.
install(DIRECTORY include/velora DESTINATION ${headers} FILES_MATCHING PATTERN "*.h")
install(FILES velora/frontend/door/ReconstructTable.h velora/frontend/door/Velora.h
        DESTINATION ${headers}/velora/frontend/door)
foreach(folder velora/frontend/toolkit plinth/runtime plinth/core velora/common velora/wisp/api)
  if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/${folder})
    install(DIRECTORY ${folder}/ DESTINATION ${headers}/${folder} FILES_MATCHING PATTERN "*.h")
  endif()
endforeach()

# The tool with its manual pages and completion, where it was built.
if(TARGET tool_velora)
  install(TARGETS tool_velora RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool OPTIONAL)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/pages/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
          COMPONENT tool OPTIONAL FILES_MATCHING PATTERN "*.1")
  install(FILES ${PROJECT_BINARY_DIR}/pages/velora.bash COMPONENT tool OPTIONAL
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME velora)
endif()
