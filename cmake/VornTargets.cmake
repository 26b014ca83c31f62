# The functions that make this project's targets. Every folder with code is one library that links only what it needs.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
# Qt requires -fPIC, GLib -pthread. A precompiled header fits only targets with the same options, so every target has
# both.
add_compile_options(-fPIC -pthread)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# Qt 6.4's moc cannot read libstdc++ if <concepts> is the first header it reaches.
if(NOT APPLE)
  set(CMAKE_AUTOMOC_MOC_OPTIONS --include version)
endif()

# Takes unchanged files from the compiler cache. Precompiled headers need the sloppiness; depend mode, which relies on
# the compiler's dependency lists, saves preprocessing every file.
find_program(VORN_CCACHE ccache)
if(VORN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  foreach(language C CXX OBJCXX)
    set(CMAKE_${language}_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_DEPEND=1 ${VORN_CCACHE})
  endforeach()
endif()

set(VORN_SANITIZE "" CACHE STRING "Sanitizers for every target, as -fsanitize= takes them")
if(VORN_SANITIZE)
  add_compile_options(-fsanitize=${VORN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VORN_SANITIZE})
endif()

# Sanitizers find nothing more in repeats of a test in another environment, in pictures, or in code in other languages:
# without VORN_EVERY_TEST they leave these out.
option(VORN_EVERY_TEST "Run each case in a process of its own, and under sanitizers whatever can run there, in every repeat" OFF)
if(VORN_SANITIZE AND NOT VORN_EVERY_TEST)
  set(VORN_FEWER_TESTS ON)
endif()

# Only LLVM's clang has libFuzzer, not Apple's.
if(VORN_FUZZ)
  include(CheckCXXSourceCompiles)
  set(CMAKE_REQUIRED_FLAGS -fsanitize=fuzzer)
  check_cxx_source_compiles("extern \"C\" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }"
                            VORN_HAS_LIBFUZZER)
  unset(CMAKE_REQUIRED_FLAGS)
  if(VORN_HAS_LIBFUZZER)
    add_compile_options(-fsanitize=fuzzer-no-link)
    add_link_options(-fsanitize=fuzzer-no-link)
  else()
    message(STATUS "This compiler has no libFuzzer: the fuzz targets are left out.")
    set(VORN_FUZZ OFF)
  endif()
endif()

option(VORN_COVERAGE "Count the lines that run (needs clang)" OFF)
if(VORN_COVERAGE)
  add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
  add_link_options(-fprofile-instr-generate -fcoverage-mapping)
endif()

add_library(vorn_warnings INTERFACE)
add_library(vorn::warnings ALIAS vorn_warnings)
target_compile_options(vorn_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                                               -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

define_property(GLOBAL PROPERTY VORN_LAYERS BRIEF_DOCS "One line a library: its name, its folder, what it links")

# vorn_library(<name> [HEADERS …] SOURCES … [PUBLIC …] [PRIVATE …])
# HEADERS are the public ones; each must compile alone. The source of the same name proves that by including it first,
# without precompiled headers (preset libcxx); for headers without one, the target all_verify_interface_header_sets
# does.
function(vorn_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;SOURCES;PUBLIC;PRIVATE")
  add_library(${name} STATIC ${arg_SOURCES})
  set(lonely ${arg_HEADERS})
  foreach(source IN LISTS arg_SOURCES)
    string(REGEX REPLACE "\\.(cpp|mm)$" ".h" header "${source}")
    list(REMOVE_ITEM lonely ${header})
  endforeach()
  set(accompanied ${arg_HEADERS})
  list(REMOVE_ITEM accompanied ${lonely} "")
  target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${accompanied}
                                FILE_SET lonely TYPE HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${lonely})
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE} vorn::warnings)
  set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON INTERFACE_HEADER_SETS_TO_VERIFY lonely)
  vorn_use_precompiled(${name} LINKS ${arg_PUBLIC} ${arg_PRIVATE})
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  list(JOIN arg_PUBLIC "," public)
  list(JOIN arg_PRIVATE "," private)
  set_property(GLOBAL APPEND PROPERTY VORN_LAYERS "${name} ${folder} ${public},${private}")
endfunction()

# vorn_qml_module(<name> URI … [HEADERS …] [SOURCES …] [QML …] [RESOURCES …] [DEPENDENCIES …] [PUBLIC …] [PRIVATE …])
# A library whose types and files QML imports by URI. Programs that use it also link <name>plugin, and import the
# plugin's class, which is named after the URI (Q_IMPORT_QML_PLUGIN). DEPENDENCIES are the modules that have the base
# classes of its C++ types.
function(vorn_qml_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "HEADERS;SOURCES;QML;RESOURCES;DEPENDENCIES;PUBLIC;PRIVATE")
  vorn_library(${name} HEADERS ${arg_HEADERS} SOURCES ${arg_SOURCES} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
  set_target_properties(${name} PROPERTIES AUTOMOC ON) # before qt_add_qml_module, which checks for it
  string(REPLACE "." "/" path ${arg_URI})
  set(generated)
  if(NOT VORN_PRECOMPILE)
    set(generated NO_CACHEGEN) # code generated from QML cannot lack an include, and takes long to compile
  endif()
  qt_add_qml_module(${name} URI ${arg_URI} VERSION 1.0 RESOURCE_PREFIX /qt/qml OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/qml/${path}
                    ${generated} QML_FILES ${arg_QML} RESOURCES ${arg_RESOURCES} DEPENDENCIES ${arg_DEPENDENCIES})
  # Code generated by Qt triggers our warnings, and includes our headers without their folders.
  get_target_property(sources ${name} SOURCES)
  list(FILTER sources INCLUDE REGEX "/(\\.rcc/qmlcache/|.*_qmltyperegistrations).*\\.cpp$")
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
endfunction()

# vorn_program(<name> SOURCES … [LINKS …])
function(vorn_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINKS} vorn::warnings)
  vorn_use_precompiled(${name} LINKS ${arg_LINKS})
endfunction()

# vorn_test_library(<name> SOURCES … [PUBLIC …] [PRIVATE …]): code shared by test programs.
function(vorn_test_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;PUBLIC;PRIVATE")
  add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE} GTest::gmock vorn::warnings)
  vorn_use_precompiled(${name} LINKS ${arg_PUBLIC} ${arg_PRIVATE})
endfunction()

# vorn_add_shards(<name> <number> COMMAND … [ENVIRONMENT …] [PROPERTIES …]): runs a GoogleTest program in <number>
# parallel shards.
function(vorn_add_shards name number)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "COMMAND;ENVIRONMENT;PROPERTIES")
  math(EXPR last "${number} - 1")
  foreach(shard RANGE ${last})
    add_test(NAME ${name}.${shard} COMMAND ${arg_COMMAND})
    set_tests_properties(${name}.${shard} PROPERTIES ${arg_PROPERTIES}
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${number};GTEST_SHARD_INDEX=${shard};${arg_ENVIRONMENT}")
  endforeach()
endfunction()

# vorn_test(<name> [SINGLE_THREADED] [COST <number>] [SHARDS <number>] SOURCES … [LINKS …]): a GoogleTest program. CTest
# runs it whole or in SHARDS, as starting it takes longer than most cases; with VORN_EVERY_TEST, case by case. Programs
# with a higher COST start first. The thread sanitizer finds nothing in SINGLE_THREADED ones: without VORN_EVERY_TEST it
# leaves them out.
function(vorn_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "SINGLE_THREADED" "COST;SHARDS" "SOURCES;LINKS")
  set(cost 0)
  if(arg_COST)
    set(cost ${arg_COST})
  endif()
  set(shards 1)
  if(arg_SHARDS)
    set(shards ${arg_SHARDS})
  endif()
  set(limit 120)
  if(VORN_SANITIZE)
    set(limit 600)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${arg_LINKS} GTest::gmock_main vorn::warnings)
  vorn_use_precompiled(${name} LINKS ${arg_LINKS})
  if(arg_SINGLE_THREADED AND VORN_FEWER_TESTS AND VORN_SANITIZE MATCHES "thread")
    set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
  elseif(VORN_EVERY_TEST)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${limit} COST ${cost})
  else()
    vorn_add_shards(${name} ${shards} COMMAND ${name} PROPERTIES TIMEOUT ${limit} COST ${cost})
  endif()
endfunction()

# Writes each library's links, with which a test compares every #include, to layers.txt, and its macOS frameworks to
# frameworks.txt.
function(vorn_write_layers)
  get_property(layers GLOBAL PROPERTY VORN_LAYERS)
  list(JOIN layers "\n" text)
  file(WRITE ${PROJECT_BINARY_DIR}/layers.txt "${text}\n")

  set(text "")
  foreach(layer IN LISTS layers)
    string(REGEX MATCH "^[^ ]+ [^ ]+" name_and_folder "${layer}")
    string(REGEX MATCH "^[^ ]+" name "${layer}")
    get_target_property(links ${name} LINK_LIBRARIES)
    list(FILTER links INCLUDE REGEX "^-framework ")
    list(TRANSFORM links REPLACE "^-framework " "")
    list(JOIN links "," frameworks)
    string(APPEND text "${name_and_folder} ${frameworks}\n")
  endforeach()
  file(WRITE ${PROJECT_BINARY_DIR}/frameworks.txt "${text}")
endfunction()
