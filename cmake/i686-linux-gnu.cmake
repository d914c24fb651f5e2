# Cross build for 32-bit x86, for the fuzz targets: clang with libFuzzer and the sanitizers.
#
# All libraries, those of C and C++ too, lie in build/sysroot-i386, where scripts/setup --i386
# unpacks them. Programs run where the kernel takes 32-bit ones, as x86-64 does.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)

set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VELORA_I386_SYSROOT)
if(NOT VELORA_I386_SYSROOT)
  get_filename_component(VELORA_I386_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../build/sysroot-i386
                         ABSOLUTE)
endif()

set(CMAKE_SYSROOT ${VELORA_I386_SYSROOT})
foreach(language C CXX)
  set(CMAKE_${language}_COMPILER_TARGET i686-linux-gnu)
  # SSE as on x86-64: a float is a float.
  set(CMAKE_${language}_FLAGS_INIT "-msse2 -mfpmath=sse")
endforeach()
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The programs take the loader and the libraries of the sysroot.
set(libraries ${VELORA_I386_SYSROOT}/usr/lib/i386-linux-gnu)
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-Wl,--dynamic-linker=${libraries}/ld-linux.so.2 -Wl,-rpath,${libraries}")
