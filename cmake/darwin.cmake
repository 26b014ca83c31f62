# Toolchain file of scripts/check-darwin, which configures for macOS on Debian, without a Mac. Source lists, languages
# and conditions are evaluated as on a Mac, and nothing is built. Debian's libraries stand in for Homebrew's.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 23.0.0)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_OSX_SYSROOT "")

find_program(VORN_CLANG clang-19 REQUIRED)
find_program(VORN_CLANGXX clang++-19 REQUIRED)
find_program(CMAKE_OTOOL llvm-otool-19 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-19 REQUIRED)
foreach(language C CXX OBJC OBJCXX)
  string(REGEX MATCH "XX$" plus "${language}")
  set(CMAKE_${language}_COMPILER ${VORN_CLANG${plus}})
  set(CMAKE_${language}_COMPILER_WORKS ON)
endforeach()
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY) # there is nothing to link with

execute_process(COMMAND ${VORN_CLANG} -print-target-triple OUTPUT_VARIABLE triple OUTPUT_STRIP_TRAILING_WHITESPACE)
string(REGEX REPLACE "-(pc|unknown)-" "-" CMAKE_LIBRARY_ARCHITECTURE "${triple}")
list(APPEND CMAKE_PREFIX_PATH /usr /usr/lib/${CMAKE_LIBRARY_ARCHITECTURE})
set(CMAKE_FIND_LIBRARY_SUFFIXES .so .a)
set(QT_HOST_PATH /usr)
set(QT_NO_PLATFORM_CHECK ON)
# Qt's package requires these on a Mac, and others on Debian.
set(framework ${CMAKE_BINARY_DIR}/OpenGL.framework)
file(MAKE_DIRECTORY ${framework})
set(OPENGL_INCLUDE_DIR ${framework} CACHE PATH "")
set(OPENGL_gl_LIBRARY ${framework} CACHE PATH "")
