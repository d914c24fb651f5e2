# Every folder tests/<name>/ with sources is one GoogleTest program, <name>_test.
#
#   tests/support/         helpers, a static library that every test links
#   tests/shared_library/  links libvelora.so alone: the library as a caller sees it
#   tests/authoring/       links velora_authoring too; native builds only
#   tests/data/            data, reached through VELORA_TEST_DATA
#   tests/install/         programs that scripts/check-install builds against an installed tree

if(NOT TARGET velora)
  return()
endif()
find_package(GTest REQUIRED)
include(GoogleTest)

add_library(test_settings INTERFACE)
target_link_libraries(test_settings INTERFACE velora_settings GTest::gmock GTest::gtest
                                              GTest::gtest_main)
target_compile_definitions(test_settings
                           INTERFACE VELORA_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")

# FFTW's shared library, the reference of the library's transforms, however those are linked.
find_library(VELORA_FFTW_REFERENCE fftw3f)
mark_as_advanced(VELORA_FFTW_REFERENCE)

# Helpers that know the library from inside; they stay out of the test that must not.
file(GLOB_RECURSE support CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/support/*.cpp)
if(support AND NOT VELORA_DEVICE)
  add_library(test_support STATIC ${support})
  target_link_libraries(test_support PUBLIC test_settings velora_static)
endif()

file(GLOB folders CONFIGURE_DEPENDS LIST_DIRECTORIES true ${PROJECT_SOURCE_DIR}/tests/*)
list(FILTER folders EXCLUDE REGEX "/(support|data|install)$")
if(VELORA_DEVICE)
  # Only the link is different, so only the library as a caller sees it is tested.
  list(FILTER folders INCLUDE REGEX "/shared_library$")
endif()
foreach(folder IN LISTS folders)
  get_filename_component(name ${folder} NAME)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp)
  if(NOT sources OR (name STREQUAL "authoring" AND NOT TARGET velora_authoring))
    continue()
  endif()
  set(test ${name}_test)
  add_executable(${test} ${sources})
  set_target_properties(${test} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  target_link_libraries(${test} PRIVATE test_settings)
  if(name STREQUAL "shared_library")
    # The one helper that knows nothing of the library: the heap under watch.
    target_sources(${test} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/process_heap.cpp)
    # zlib too: it makes damaged packs with a sound stream.
    target_link_libraries(${test} PRIVATE velora velora_outside ${VELORA_ZLIB_LIBRARY}
                                          ${VELORA_FFTW_REFERENCE})
    target_compile_definitions(${test} PRIVATE VELORA_LIBRARY="$<TARGET_FILE:velora>")
  else()
    target_link_libraries(${test} PRIVATE $<TARGET_NAME_IF_EXISTS:test_support> velora_static)
  endif()
  if(name STREQUAL "authoring")
    target_link_libraries(${test} PRIVATE velora_authoring)
    if(TARGET tool_velora)
      add_dependencies(${test} tool_velora)
      target_compile_definitions(${test} PRIVATE VELORA_TOOL="$<TARGET_FILE:tool_velora>"
                                                 VELORA_SOURCE="${PROJECT_SOURCE_DIR}")
    endif()
  endif()
  # Listed when ctest starts, through the emulator where there is one.
  gtest_discover_tests(${test} TEST_PREFIX ${name}: DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
                       WORKING_DIRECTORY ${PROJECT_BINARY_DIR})
endforeach()
