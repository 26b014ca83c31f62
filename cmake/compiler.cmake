# Users' compiler on macOS is Apple's clang; Debian builds with clang 19 and lld unless CC and CXX say otherwise.
if(CMAKE_HOST_SYSTEM_NAME STREQUAL "Linux" AND NOT DEFINED ENV{CXX})
  set(CMAKE_C_COMPILER clang-19)
  set(CMAKE_CXX_COMPILER clang++-19)
  set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld-19")
endif()
