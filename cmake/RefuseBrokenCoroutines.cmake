# GCC before 13 destroys owning temporaries twice in a statement that contains `co_await` (GCC bug 107288 and related
# ones): the program builds and then corrupts its heap.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  message(FATAL_ERROR "GCC ${CMAKE_CXX_COMPILER_VERSION} miscompiles coroutines: install clang-19 and configure with a preset, or use GCC 13 or later.")
endif()
