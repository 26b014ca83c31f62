# Qt says in its package which macOS it needs at least, from some version on. Nothing that is built with it runs before
# that: who chose no version gets Qt's, for compilers and for the bundle, and who chose an earlier one is told.
if(APPLE AND QT_SUPPORTED_MIN_MACOS_VERSION VERSION_GREATER CMAKE_OSX_DEPLOYMENT_TARGET)
  if(NOT VORN_MAY_RAISE_MACOS)
    message(FATAL_ERROR "Qt ${Qt6_VERSION} needs macOS ${QT_SUPPORTED_MIN_MACOS_VERSION}: "
                        "CMAKE_OSX_DEPLOYMENT_TARGET cannot be ${CMAKE_OSX_DEPLOYMENT_TARGET}.")
  endif()
  message(STATUS "Qt ${Qt6_VERSION} needs macOS ${QT_SUPPORTED_MIN_MACOS_VERSION}, and so does what is built here.")
  set(CMAKE_OSX_DEPLOYMENT_TARGET ${QT_SUPPORTED_MIN_MACOS_VERSION})
endif()
