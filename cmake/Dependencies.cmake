# The libraries that libvelora calls, as velora_system, found below the sysroot when one is set.
# No pkg-config here: it would answer for the build machine when the target is another one.

add_library(velora_system INTERFACE)

function(velora_require name header library)
  find_path(${name}_INCLUDE ${header})
  find_library(${name}_LIBRARY ${library})
  mark_as_advanced(${name}_INCLUDE ${name}_LIBRARY)
  if(NOT ${name}_INCLUDE OR NOT ${name}_LIBRARY)
    message(FATAL_ERROR "${name} is missing (${header}, lib${library}): run scripts/setup")
  endif()
  target_link_libraries(velora_system INTERFACE ${${name}_LIBRARY})
endfunction()

velora_require(VELORA_ZLIB zlib.h z)
velora_require(VELORA_FFTW fftw3.h fftw3f)
velora_require(VELORA_LZMA lzma.h lzma)
velora_require(VELORA_CRYPTO openssl/sha.h crypto)
