#include <QtQml/qqmlextensionplugin.h>

// QML modules are found by name only: without these references the linker would drop them as unused.
Q_IMPORT_QML_PLUGIN(VornPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_ComponentsPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_DrawingPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_SystemPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_ViewPlugin)
