# What is around the library: authoring/ (the encoder side), tools/<name>/ (one program each),
# bench/*.cpp and examples/* (one program a file). All but the examples are for native builds.

if(NOT TARGET velora)
  return()
endif()

file(GLOB examples CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/examples/*.c
     ${PROJECT_SOURCE_DIR}/examples/*.cpp)
foreach(source IN LISTS examples)
  get_filename_component(name ${source} NAME_WE)
  add_executable(example_${name} ${source})
  target_link_libraries(example_${name} PRIVATE velora velora_settings velora_outside)
  set_target_properties(example_${name} PROPERTIES OUTPUT_NAME ${name} RUNTIME_OUTPUT_DIRECTORY
                                                                    ${PROJECT_BINARY_DIR}/examples)
  # A sanitized library wants the C++ runtime of its sanitizers in the program.
  if(VELORA_SANITIZE)
    set_target_properties(example_${name} PROPERTIES LINKER_LANGUAGE CXX)
  endif()
endforeach()

# The part of authoring/ that needs no other library: packs, and families of them. Fuzz targets use
# it too, and programs of every machine.
file(GLOB_RECURSE authoring CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/authoring/*.cpp)
set(outside ${authoring})
list(FILTER outside INCLUDE REGEX
     "/(icc|lcms|picture|proof|device_link|image_file|table_(error|file|slices|text)|deflate|small_packs|pack_room|goal|[a-z]+_search|[a-z]+_job)\\.cpp$")
if(authoring)
  list(REMOVE_ITEM authoring ${outside})
  add_library(velora_packs STATIC EXCLUDE_FROM_ALL ${authoring})
  target_link_libraries(velora_packs PUBLIC velora_static ${CMAKE_DL_LIBS})
  set_target_properties(velora_packs PROPERTIES ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
endif()

if(CMAKE_CROSSCOMPILING)
  return()
endif()

if(VELORA_TOOLS)
  find_path(VELORA_LCMS_INCLUDE lcms2.h)
  find_library(VELORA_LCMS_LIBRARY lcms2)
  find_path(VELORA_CLI11_INCLUDE CLI/CLI.hpp)
  find_path(VELORA_ZOPFLI_INCLUDE zopfli/zopfli.h)
  find_library(VELORA_ZOPFLI_LIBRARY zopfli)
  find_package(Threads REQUIRED)
  find_package(nlohmann_json QUIET)
  find_package(PNG QUIET)
  find_package(TIFF QUIET)
  mark_as_advanced(VELORA_LCMS_INCLUDE VELORA_LCMS_LIBRARY VELORA_CLI11_INCLUDE
                   VELORA_ZOPFLI_INCLUDE VELORA_ZOPFLI_LIBRARY)
  if(NOT VELORA_LCMS_LIBRARY OR NOT VELORA_LCMS_INCLUDE OR NOT PNG_FOUND OR NOT TIFF_FOUND
     OR NOT VELORA_CLI11_INCLUDE OR NOT nlohmann_json_FOUND
     OR NOT VELORA_ZOPFLI_INCLUDE OR NOT VELORA_ZOPFLI_LIBRARY)
    message(STATUS "No authoring and no tools: Little CMS, libpng, libtiff, zopfli, CLI11 or "
                   "nlohmann-json is missing (scripts/setup installs them)")
  elseif(outside)
    add_library(velora_authoring STATIC ${outside})
    target_link_libraries(velora_authoring PUBLIC velora_packs ${VELORA_LCMS_LIBRARY}
                                                  ${VELORA_ZOPFLI_LIBRARY} PNG::PNG TIFF::TIFF
                                                  Threads::Threads)
    # The searches are sums over planes: here the compiler shall use the processor's vectors.
    set_source_files_properties(authoring/dct.cpp authoring/toner_search.cpp
                                PROPERTIES COMPILE_OPTIONS -O3)
    set_target_properties(velora_authoring PROPERTIES ARCHIVE_OUTPUT_DIRECTORY
                                                      ${PROJECT_BINARY_DIR})

    file(GLOB folders CONFIGURE_DEPENDS LIST_DIRECTORIES true ${PROJECT_SOURCE_DIR}/tools/*)
    foreach(folder IN LISTS folders)
      get_filename_component(name ${folder} NAME)
      file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp)
      if(sources)
        add_executable(tool_${name} ${sources})
        target_link_libraries(tool_${name} PRIVATE velora_authoring nlohmann_json::nlohmann_json
                                                   ${CMAKE_DL_LIBS})
        set_target_properties(tool_${name} PROPERTIES OUTPUT_NAME ${name} RUNTIME_OUTPUT_DIRECTORY
                                                                 ${PROJECT_BINARY_DIR}/bin)
        # A tool may load libvelora.so from the folder above its own.
        add_dependencies(tool_${name} velora)
        if(name STREQUAL "velora")
          # Manual pages and completion, from the same text as --help.
          add_custom_command(
            TARGET tool_velora POST_BUILD
            COMMAND tool_velora --pages ${PROJECT_BINARY_DIR}/pages
            COMMAND sh -c "gzip -9nkf ${PROJECT_BINARY_DIR}/pages/*.1" VERBATIM)
        endif()
      endif()
    endforeach()
  endif()
endif()

if(VELORA_BENCH AND NOT VELORA_SANITIZE)
  find_package(benchmark QUIET)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/bench/*.cpp)
  if(NOT benchmark_FOUND)
    message(STATUS "No benchmarks: Google Benchmark is missing (scripts/setup installs it)")
  else()
    foreach(source IN LISTS sources)
      get_filename_component(name ${source} NAME_WE)
      add_executable(bench_${name} ${source})
      target_link_libraries(
        bench_${name} PRIVATE $<IF:$<TARGET_EXISTS:velora_authoring>,velora_authoring,velora_static>
                              benchmark::benchmark)
      set_target_properties(bench_${name} PROPERTIES OUTPUT_NAME ${name} RUNTIME_OUTPUT_DIRECTORY
                                                                   ${PROJECT_BINARY_DIR}/bench)
    endforeach()
  endif()

  # The processes that bench/cold starts: C programs, each with the one library that it is about.
  if(TARGET bench_cold)
    target_compile_definitions(
      bench_cold PRIVATE BENCH_INK_DATA="${PROJECT_SOURCE_DIR}/tests/data/vectors/ink")
    foreach(name empty velora ink lcms)
      add_executable(bench_cold_${name} ${PROJECT_SOURCE_DIR}/bench/cold/${name}.c)
      set_target_properties(
        bench_cold_${name} PROPERTIES OUTPUT_NAME ${name}
                                      RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bench/cold-programs)
      target_link_libraries(bench_cold_${name} PRIVATE velora_settings)
      add_dependencies(bench_cold bench_cold_${name})
    endforeach()
    target_link_libraries(bench_cold_velora PRIVATE velora)
    target_link_libraries(bench_cold_ink PRIVATE velora)
    target_link_libraries(bench_cold_lcms PRIVATE ${VELORA_LCMS_LIBRARY})
  endif()
endif()
