# Cross build for the device's kind of machine: 32-bit ARM, hard float, Linux.
#
# The compiler brings its own C and C++ libraries. Everything else (zlib, FFTW, liblzma, OpenSSL,
# GoogleTest) lies in build/sysroot-arm, where scripts/setup unpacks it.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)

set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VELORA_ARM_SYSROOT)
if(NOT VELORA_ARM_SYSROOT)
  get_filename_component(VELORA_ARM_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../build/sysroot-arm ABSOLUTE)
endif()

set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(CMAKE_FIND_ROOT_PATH ${VELORA_ARM_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
foreach(language C CXX)
  set(CMAKE_${language}_STANDARD_INCLUDE_DIRECTORIES
      ${VELORA_ARM_SYSROOT}/usr/include/arm-linux-gnueabihf ${VELORA_ARM_SYSROOT}/usr/include)
endforeach()

# Whoever links libvelora.so leads the linker to the libraries behind it.
set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,-rpath-link,${VELORA_ARM_SYSROOT}/usr/lib/arm-linux-gnueabihf)

set(CMAKE_CROSSCOMPILING_EMULATOR
    qemu-arm -L /usr/arm-linux-gnueabihf -E
    LD_LIBRARY_PATH=${VELORA_ARM_SYSROOT}/usr/lib/arm-linux-gnueabihf)
