#pragma once

#include <QString>

namespace vorn {

// What only one of the systems has, or has in another way. Threads: the main thread, once there is a QGuiApplication.

/// How much larger than usual the user wants text; 1 for the usual size.
double systemTextScale();
/// The family of fonts that windows are written in.
QString systemFontFamily();
/// The path of what the desktop knows the running application by.
QString applicationFile();
/// The path of the text that names what the application is made of, and the licences of that.
QString noticesFile();

} // namespace vorn
