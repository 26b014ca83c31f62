#pragma once

#include <QString>

namespace vorn {

// Facts and paths that each system has in its own way. Threads: the main thread, once there is a QGuiApplication.

/// How much larger than usual the user wants text; 1 for the usual size.
double systemTextScale();
/// The family of fonts that windows are written in.
QString systemFontFamily();
/// The path by which the desktop knows the running application.
QString applicationFile();
/// The path of the text with the third-party notices and licences.
QString noticesFile();

} // namespace vorn
