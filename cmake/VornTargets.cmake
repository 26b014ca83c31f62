# How this project's targets are made. Every folder with code is one library that links only what it needs.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# Qt 6.4's moc cannot read libstdc++ where <concepts> is what it comes to first.
if(NOT APPLE)
  set(CMAKE_AUTOMOC_MOC_OPTIONS --include version)
endif()

set(VORN_SANITIZE "" CACHE STRING "Sanitizers for every target, as -fsanitize= takes them")
if(VORN_SANITIZE)
  add_compile_options(-fsanitize=${VORN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VORN_SANITIZE})
endif()

add_library(vorn_warnings INTERFACE)
add_library(vorn::warnings ALIAS vorn_warnings)
target_compile_options(vorn_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
                                               -Wnon-virtual-dtor -Woverloaded-virtual -Werror)

define_property(GLOBAL PROPERTY VORN_LAYERS BRIEF_DOCS "One line a library: its name, its folder, what it links")

# vorn_library(<name> [HEADERS …] SOURCES … [PUBLIC …] [PRIVATE …])
# HEADERS are the public ones; each must compile alone (target all_verify_interface_header_sets).
function(vorn_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;SOURCES;PUBLIC;PRIVATE")
  add_library(${name} STATIC ${arg_SOURCES})
  target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${arg_HEADERS})
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE} vorn::warnings)
  set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  list(JOIN arg_PUBLIC "," public)
  list(JOIN arg_PRIVATE "," private)
  set_property(GLOBAL APPEND PROPERTY VORN_LAYERS "${name} ${folder} ${public},${private}")
endfunction()

# vorn_qml_module(<name> URI … [HEADERS …] [SOURCES …] [QML …] [RESOURCES …] [DEPENDENCIES …] [PUBLIC …] [PRIVATE …])
# A library whose types and files QML imports by URI. Who shows them links <name>plugin too, and imports its class, which
# is called after the URI. DEPENDENCIES are the modules that hold the bases of its C++ types.
function(vorn_qml_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "HEADERS;SOURCES;QML;RESOURCES;DEPENDENCIES;PUBLIC;PRIVATE")
  vorn_library(${name} HEADERS ${arg_HEADERS} SOURCES ${arg_SOURCES} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
  set_target_properties(${name} PROPERTIES AUTOMOC ON) # before Qt looks for it
  string(REPLACE "." "/" path ${arg_URI})
  qt_add_qml_module(${name} URI ${arg_URI} VERSION 1.0 RESOURCE_PREFIX /qt/qml OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/qml/${path}
                    QML_FILES ${arg_QML} RESOURCES ${arg_RESOURCES} DEPENDENCIES ${arg_DEPENDENCIES})
  # What Qt generates is not written to our warnings, and names our headers without their folders.
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
endfunction()

# vorn_test(<name> SOURCES … [LINKS …]): a GoogleTest program whose cases CTest runs one by one.
function(vorn_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${arg_LINKS} GTest::gmock_main vorn::warnings)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 600)
endfunction()

# Writes what each library links, for the test that holds every #include against it.
function(vorn_write_layers)
  get_property(layers GLOBAL PROPERTY VORN_LAYERS)
  list(JOIN layers "\n" text)
  file(WRITE ${PROJECT_BINARY_DIR}/layers.txt "${text}\n")
endfunction()
