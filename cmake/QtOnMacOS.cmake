# Newer Qt packages name the first macOS that they support; nothing built with them runs on an earlier one. If no
# deployment target was chosen, compilers and the bundle get Qt's; a chosen one that is earlier is refused.
if(APPLE AND QT_SUPPORTED_MIN_MACOS_VERSION VERSION_GREATER CMAKE_OSX_DEPLOYMENT_TARGET)
  if(NOT VORN_MAY_RAISE_MACOS)
    message(FATAL_ERROR "Qt ${Qt6_VERSION} needs macOS ${QT_SUPPORTED_MIN_MACOS_VERSION}: "
                        "CMAKE_OSX_DEPLOYMENT_TARGET cannot be ${CMAKE_OSX_DEPLOYMENT_TARGET}.")
  endif()
  message(STATUS "Qt ${Qt6_VERSION} needs macOS ${QT_SUPPORTED_MIN_MACOS_VERSION}, and so does what is built here.")
  set(CMAKE_OSX_DEPLOYMENT_TARGET ${QT_SUPPORTED_MIN_MACOS_VERSION})
endif()
