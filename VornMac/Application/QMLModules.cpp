#include <QtQml/qqmlextensionplugin.h>

// The linker leaves out what nobody calls, and modules are found by name alone.
Q_IMPORT_QML_PLUGIN(VornPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_ComponentsPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_DrawingPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_SystemPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_ViewPlugin)
