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
velora_install_headers(velora/common/api)
velora_install_headers(velora/common)
velora_install_headers(plinth/core/api)
install(FILES velora/frontend/door/ReconstructTable.h velora/frontend/door/Velora.h
        DESTINATION ${headers}/velora/frontend/door)
install(FILES plinth/runtime/api/BootRecord.h plinth/runtime/api/Configuration.h plinth/runtime/api/raise.h
        DESTINATION ${headers}/plinth/runtime/api)
