# The rooms of the library, from the ground up, and the library itself in both forms:
# velora (libvelora.so) and velora_static (the same objects, for tests and tools that look inside).
#
# The object world leaves frames by longjmp alone, so it is compiled without exceptions and without
# unwind tables, as the plain code around it is; scripts/check-unwinding holds them to that. RTTI
# stays on, dynamic_cast needs it.
#
# The object world is compiled for size, except for the runtime, which is small and part of every
# step, and for the files below, in which an ink request spends its time. With -Os GCC makes one body
# of the two forms of a constructor; the base form needs a virtual table for each base, so
# -fno-declone-ctor-dtor keeps them apart.

include(CheckLinkerFlag)

set(VELORA_FAST
    velora/wisp/core/components/CChannelData.cpp velora/wisp/core/components/CChannelMap.cpp
    velora/wisp/core/components/CColorMap.cpp velora/wisp/core/components/CNodes.cpp
    velora/wisp/core/delta_code.cpp velora/wisp/core/pyramid.cpp)

set(VELORA_ROOMS)
set(VELORA_OBJECT_WORLD)

# velora_room(NAME FOLDER [OBJECT_WORLD] [FAST] [ONLY glob] [EXCEPT regex]): one object library of a
# folder's sources; no target while the folder has none.
function(velora_room name folder)
  cmake_parse_arguments(room "OBJECT_WORLD;FAST" "ONLY;EXCEPT" "" ${ARGN})
  if(NOT room_ONLY)
    set(room_ONLY "*.cpp")
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/${room_ONLY})
  if(room_EXCEPT)
    list(FILTER sources EXCLUDE REGEX ${room_EXCEPT})
  endif()
  if(NOT sources)
    return()
  endif()
  add_library(${name} OBJECT ${sources})
  target_link_libraries(${name} PRIVATE velora_settings)
  if(room_OBJECT_WORLD)
    target_compile_options(${name} PRIVATE -fno-exceptions -fno-asynchronous-unwind-tables)
    if(NOT VELORA_SANITIZE AND NOT room_FAST)
      target_compile_options(${name} PRIVATE -Os ${VELORA_SIZE_OPTIONS})
    endif()
    set(VELORA_OBJECT_WORLD ${VELORA_OBJECT_WORLD} ${name} PARENT_SCOPE)
  endif()
  set(VELORA_ROOMS ${VELORA_ROOMS} ${name} PARENT_SCOPE)
endfunction()

# With -Os GCC also copies by a string instruction on x86-64, which is slower than memcpy.
set(VELORA_SIZE_OPTIONS)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  list(APPEND VELORA_SIZE_OPTIONS -fno-declone-ctor-dtor)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL x86_64)
    list(APPEND VELORA_SIZE_OPTIONS -mstringop-strategy=libcall)
  endif()
endif()

if(NOT VELORA_SANITIZE)
  set_source_files_properties(${VELORA_FAST} PROPERTIES COMPILE_OPTIONS -O2)
endif()

velora_room(room_plinth_runtime plinth/runtime OBJECT_WORLD FAST)
velora_room(room_plinth_core plinth/core OBJECT_WORLD)
# The grid's transform is our own code, which is written for the vectoriser, or FFTW's. The list of
# solvers is for FFTW's archive alone.
if(VELORA_FFTW_TRANSFORM)
  set(left_out "/grid_transform\\.cpp$")
else()
  set(left_out "/grid_transform_fftw\\.cpp$")
endif()
if(NOT VELORA_FFTW_SOLVERS)
  string(APPEND left_out "|/fftw_solvers\\.cpp$")
endif()
velora_room(room_toolkit velora/frontend/toolkit OBJECT_WORLD FAST EXCEPT ${left_out})
velora_room(room_common velora/common OBJECT_WORLD)
# Loops for the vectoriser: over planes, and over the bytes of a record.
set_source_files_properties(
  velora/frontend/toolkit/grid_transform.cpp velora/frontend/toolkit/arithmetic.cpp
  velora/common/core/checksum.cpp PROPERTIES COMPILE_OPTIONS -O3)
velora_room(room_fenn velora/fenn OBJECT_WORLD)
velora_room(room_wisp velora/wisp OBJECT_WORLD)
velora_room(room_facade velora/frontend/door OBJECT_WORLD ONLY "Velora*.cpp")
velora_room(room_door velora/frontend/door OBJECT_WORLD FAST EXCEPT "/Velora[^/]*\\.cpp$")

set(objects)
foreach(room IN LISTS VELORA_ROOMS)
  list(APPEND objects $<TARGET_OBJECTS:${room}>)
endforeach()
if(NOT objects)
  message(STATUS "No room has a source yet: no library, no tests")
  return()
endif()

# GCC puts the virtual table of a class and those of its bases under construction in one section
# group, which the linker keeps or drops as a whole. Nothing refers to the latter; out of their
# groups, the section garbage collection drops them.
set(linked ${objects})
if(NOT VELORA_SANITIZE)
  set(linked ${PROJECT_BINARY_DIR}/velora.o)
  add_custom_command(
    OUTPUT ${linked}
    COMMAND ${CMAKE_CXX_COMPILER} -r -nostdlib -Wl,--force-group-allocation -o ${linked} ${objects}
    DEPENDS ${objects}
    COMMAND_EXPAND_LISTS VERBATIM)
endif()

add_library(velora SHARED ${linked})
target_link_libraries(velora PRIVATE $<BUILD_INTERFACE:velora_settings>
                                     $<BUILD_INTERFACE:velora_system>)
target_include_directories(
  velora INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
                   $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                   $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
                   $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/velora-1>)
set_target_properties(
  velora
  PROPERTIES LINKER_LANGUAGE CXX
             VERSION ${PROJECT_VERSION}
             SOVERSION ${PROJECT_VERSION_MAJOR}
             LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}
             # A path of the build machine has no place in the library.
             SKIP_BUILD_RPATH ON)
# Stays mapped behind a dlclose, as libcrypto and others below it do: opening it again is cheap, and
# what FFTW keeps for a process is kept once.
target_link_options(velora PRIVATE -Wl,-z,nodelete)
if(NOT VELORA_SANITIZE AND NOT VELORA_THREADS)
  target_link_options(velora PRIVATE -Wl,--no-undefined -Wl,--gc-sections)
  # The place of each virtual function's address, as a bit: 24 bytes each otherwise. GNU ld does it
  # for x86-64 alone.
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL x86_64)
    check_linker_flag(CXX -Wl,-z,pack-relative-relocs VELORA_PACKS_RELOCATIONS)
    if(VELORA_PACKS_RELOCATIONS)
      target_link_options(velora PRIVATE -Wl,-z,pack-relative-relocs)
    endif()
  endif()
endif()
if(VELORA_DEVICE)
  # Nothing that comes from an archive is exported.
  target_link_options(velora PRIVATE -static-libstdc++ -static-libgcc -Wl,--exclude-libs,ALL
                      -Wl,--as-needed)
endif()

add_library(velora_static STATIC ${objects})
if(VELORA_DEVICE)
  set_target_properties(velora_static PROPERTIES EXCLUDE_FROM_ALL ON)
endif()
target_link_libraries(velora_static PUBLIC velora_settings velora_system)
set_target_properties(velora_static PROPERTIES LINKER_LANGUAGE CXX ARCHIVE_OUTPUT_DIRECTORY
                                                                   ${PROJECT_BINARY_DIR})

# For scripts/check-unwinding: one object file of the object world a line.
set(object_world)
foreach(room IN LISTS VELORA_OBJECT_WORLD)
  list(APPEND object_world $<TARGET_OBJECTS:${room}>)
endforeach()
file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/object-world.txt
     CONTENT "$<JOIN:${object_world},\n>\n")
