include(CheckCXXCompilerFlag)

# vorn_counted_library(<name> <library> [FUZZED]): makes <name> from the sources of <library>, compiled so that
# tests/support/steps counts their memory reads; link it instead of <library>. Needs clang: without it, <name> is not
# made. FUZZED keeps the fuzzer's own coverage instrumentation.
function(vorn_counted_library name library)
  cmake_parse_arguments(PARSE_ARGV 2 arg "FUZZED" "" "")
  set(count -fsanitize-coverage=func,trace-loads)
  if(arg_FUZZED)
    set(count -fsanitize-coverage=trace-loads)
  endif()
  check_cxx_compiler_flag(${count} VORN_COUNTS_STEPS)
  if(NOT VORN_COUNTS_STEPS)
    return()
  endif()
  get_target_property(folder ${library} SOURCE_DIR)
  get_target_property(sources ${library} SOURCES)
  get_target_property(links ${library} LINK_LIBRARIES)
  list(FILTER sources EXCLUDE REGEX "\\.mm$") # they call the system's code, which is not counted
  list(TRANSFORM sources PREPEND "${folder}/" REGEX "^[^/]")
  add_library(${name} STATIC ${sources} ${PROJECT_SOURCE_DIR}/tests/support/steps/StepCount.cpp)
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_compile_options(${name} PRIVATE -O1) # without inlining, the linker may choose uncounted copies of templates
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS ${count})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${links})
endfunction()
