# Makes memory errors harder to exploit in the programs that users run. Not with sanitizers, which check memory
# themselves, nor without optimisation, which FORTIFY needs. A Mac's linker hardens by default.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT VORN_SANITIZE)
  add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  if(NOT APPLE)
    add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>)
  endif()
endif()
