# Headers parsed once for many files: this halves the build time. They hide missing includes, which the preset libcxx
# finds by building without them. A cross build has only some headers of the target system, and precompiling all of Qt
# would need them all.
set(default ON)
if(CMAKE_CROSSCOMPILING)
  set(default OFF)
endif()
option(VORN_PRECOMPILE "Share precompiled headers" ${default})

set(standard_headers
    <algorithm> <array> <atomic> <chrono> <condition_variable> <coroutine> <cstdint> <cstring> <exception> <filesystem>
    <fstream> <functional> <iterator> <map> <memory> <mutex> <optional> <set> <sstream> <stdexcept> <string> <string_view>
    <thread> <tuple> <type_traits> <unordered_map> <utility> <variant> <vector>)
set(qt_headers <QtCore/QtCore> <QtGui/QtGui> <QtQml/QtQml> <QtQuick/QtQuick>)

# vorn_precompiled(<name> HEADERS … [LINKS …]): makes a target for `target_precompile_headers(… REUSE_FROM <name>)`.
function(vorn_precompiled name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;LINKS")
  set(source ${PROJECT_BINARY_DIR}/precompiled/${name}.cpp)
  if(NOT EXISTS ${source})
    file(WRITE ${source} "// Holds a precompiled header.\n")
  endif()
  add_library(${name} OBJECT EXCLUDE_FROM_ALL ${source})
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_link_libraries(${name} PRIVATE ${arg_LINKS})
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
  # Otherwise clang records each header's modification time, and a compiler cache never finds a match.
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    target_compile_options(${name} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
  endif()
endfunction()

# vorn_precompiled_pair(<name> [HEADERS …] [LINKS …]): <name>, and <name>_qt for targets that link Qt.
function(vorn_precompiled_pair name)
  if(NOT VORN_PRECOMPILE)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;LINKS")
  vorn_precompiled(${name} HEADERS ${standard_headers} ${arg_HEADERS} LINKS ${arg_LINKS})
  vorn_precompiled(${name}_qt HEADERS ${standard_headers} ${qt_headers} ${arg_HEADERS} LINKS Qt6::Quick ${arg_LINKS})
endfunction()

# vorn_use_precompiled(<target> LINKS …): reuses the member of the folder's pair (VORN_PRECOMPILED_PAIR) that fits the
# links. Targets with C or Objective-C++ sources use none: CMake would expect the headers precompiled for that language
# too.
function(vorn_use_precompiled target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS")
  get_target_property(sources ${target} SOURCES)
  if(NOT VORN_PRECOMPILE OR sources MATCHES "\\.(c|mm)(;|$)")
    return()
  endif()
  if(arg_LINKS MATCHES "Qt6::|VornMac(Application|Components|Drawing|Model|QMLModules|Screens|System|View)|VornTest(GuiMain|Model|Window)")
    target_precompile_headers(${target} REUSE_FROM ${VORN_PRECOMPILED_PAIR}_qt)
  else()
    target_precompile_headers(${target} REUSE_FROM ${VORN_PRECOMPILED_PAIR})
  endif()
endfunction()
