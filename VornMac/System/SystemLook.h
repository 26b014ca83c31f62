#pragma once

#include <QString>

namespace vorn {

// Facts and paths that differ between systems. Threads: the main one, once there is a QGuiApplication.

/// The factor by which the user wants text enlarged; 1 for the usual size.
double systemTextScale();
/// The font family for text in windows.
QString systemFontFamily();
/// The path by which the desktop knows the running application.
QString applicationFile();
/// The path of the text file with the third-party notices and licences.
QString noticesFile();

} // namespace vorn
