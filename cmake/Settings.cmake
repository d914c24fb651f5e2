# Flags that every target of the tree has: velora_settings carries them, and each target links it.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()
# Asserts stay on: nothing that comes in reaches one, so one that fires is a fault to be seen.
set(CMAKE_C_FLAGS_RELEASE "-O2")
set(CMAKE_CXX_FLAGS_RELEASE "-O2")

set(CMAKE_C_STANDARD 99)
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

find_program(CCACHE ccache)
mark_as_advanced(CCACHE)
if(CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(velora_settings INTERFACE)
configure_file(cmake/version.h.in ${PROJECT_BINARY_DIR}/include/velora/version.h @ONLY)
target_include_directories(
  velora_settings INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include
                            ${PROJECT_BINARY_DIR}/include)
target_compile_options(
  velora_settings
  INTERFACE -Wall -Wextra -Werror
            # A multiply and an add stay two roundings: ARM and x86-64 give the same bytes.
            -ffp-contract=off
            -fvisibility=hidden
            $<$<COMPILE_LANGUAGE:CXX>:-fvisibility-inlines-hidden>
            # Two builds in two folders give the same bytes.
            -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.
            # What nothing refers to stays out of the library.
            -ffunction-sections
            -fdata-sections
            -fstack-protector-strong)
target_link_options(velora_settings INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)

if(VELORA_THREADS)
  target_compile_options(velora_settings INTERFACE -fsanitize=thread -O1 -g)
  target_link_options(velora_settings INTERFACE -fsanitize=thread)
elseif(VELORA_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # Of debug information, the functions and lines of a report's stack: the rest takes a fifth of the
  # compiler's time.
  target_compile_options(velora_settings INTERFACE ${sanitizers} -O1 -g1)
  target_link_options(velora_settings INTERFACE ${sanitizers})
else()
  target_compile_options(velora_settings INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()

if(VELORA_FUZZ)
  # libFuzzer is led by the edges that an input takes; its main comes with each target. The check of
  # a call's dynamic type is left to the preset sanitize: without it, runs take a fifth less.
  target_compile_options(velora_settings INTERFACE -fsanitize=fuzzer-no-link -fno-sanitize=vptr -O2)
endif()

# For a program that uses the ink door's interfaces through the shared library: the check of a call's
# dynamic type needs type information that the library keeps to itself.
add_library(velora_outside INTERFACE)
if(VELORA_SANITIZE)
  target_compile_options(velora_outside INTERFACE -fno-sanitize=vptr)
endif()
