# On macOS the compiler is Apple's clang. Linux builds with clang 19 and lld unless the environment sets CXX; CC alone
# is ignored.
if(CMAKE_HOST_SYSTEM_NAME STREQUAL "Linux" AND NOT DEFINED ENV{CXX})
  set(CMAKE_C_COMPILER clang-19)
  set(CMAKE_CXX_COMPILER clang++-19)
  set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld-19")
endif()

# Homebrew keeps libraries that macOS also has out of its common prefix. pkg_check_modules searches CMAKE_PREFIX_PATH
# too.
if(CMAKE_HOST_SYSTEM_NAME STREQUAL "Darwin")
  find_program(HOMEBREW brew PATHS /opt/homebrew/bin /usr/local/bin)
  if(HOMEBREW)
    execute_process(COMMAND ${HOMEBREW} --prefix OUTPUT_VARIABLE common OUTPUT_STRIP_TRAILING_WHITESPACE)
    execute_process(COMMAND ${HOMEBREW} --prefix icu4c openssl@3 sqlite zlib
                    OUTPUT_VARIABLE apart OUTPUT_STRIP_TRAILING_WHITESPACE)
    string(REPLACE "\n" ";" apart "${apart}")
    list(APPEND CMAKE_PREFIX_PATH ${apart} ${common})
    list(REMOVE_DUPLICATES CMAKE_PREFIX_PATH) # this file is read more than once
  endif()
endif()
