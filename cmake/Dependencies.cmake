# The libraries that libvelora calls, as velora_system, found below the sysroot when one is set.
# No pkg-config here: it would answer for the build machine when the target is another one.

add_library(velora_system INTERFACE)

# velora_require(NAME HEADER LIBRARY [ARCHIVE]). With ARCHIVE, a device build links the library's
# archive into libvelora.so if it finds one; docs/building.md weighs that.
function(velora_require name header library)
  find_path(${name}_INCLUDE ${header})
  if(VELORA_DEVICE AND "ARCHIVE" IN_LIST ARGN)
    find_library(${name}_LIBRARY NAMES lib${library}.a ${library})
  else()
    find_library(${name}_LIBRARY ${library})
  endif()
  mark_as_advanced(${name}_INCLUDE ${name}_LIBRARY)
  if(NOT ${name}_INCLUDE OR NOT ${name}_LIBRARY)
    message(FATAL_ERROR "${name} is missing (${header}, lib${library}): run scripts/setup")
  endif()
  target_link_libraries(velora_system INTERFACE ${${name}_LIBRARY})
endfunction()

velora_require(VELORA_ZLIB zlib.h z)
velora_require(VELORA_FFTW fftw3.h fftw3f ARCHIVE)
velora_require(VELORA_LZMA lzma.h lzma ARCHIVE)
velora_require(VELORA_CRYPTO openssl/sha.h crypto ARCHIVE)

# FFTW's archive needs the mathematics library. Its solvers are cut down to those of the curve's plan,
# unless FFTW transforms the grid too.
set(VELORA_FFTW_SOLVERS OFF)
if(VELORA_FFTW_LIBRARY MATCHES "\\.a$")
  target_link_libraries(velora_system INTERFACE m)
  if(NOT VELORA_FFTW_TRANSFORM)
    set(VELORA_FFTW_SOLVERS ON)
  endif()
endif()
