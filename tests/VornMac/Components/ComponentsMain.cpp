#include "VornMac/System/Appearance.h"

#include <cstdlib>

#include <QQmlContext>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest/quicktest.h>

Q_IMPORT_QML_PLUGIN(Vorn_ComponentsPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_DrawingPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_SystemPlugin)

namespace vorn::testing {
namespace {

/// Lets tests written in QML set the user's preferences.
class Looks : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE void setDark(bool isDark)
    {
        Appearance::shared().setTheme(isDark ? Appearance::Theme::dark : Appearance::Theme::light);
    }
    Q_INVOKABLE void setReducesMotion(bool reduces) { Appearance::shared().setReducesMotion(reduces); }
};

class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable()
    {
        Appearance::shared().setTheme(Appearance::Theme::light);
        Appearance::shared().setReducesMotion(false);
        Appearance::shared().setTextScale(1);
    }
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        engine->addImportPath("qrc:/qt/qml");
        engine->rootContext()->setContextProperty("looks", &looks_);
    }

private:
    Looks looks_;
};

} // namespace
} // namespace vorn::testing

int main(int argc, char** argv)
{
    const QTemporaryDir runtime;
    setenv("XDG_RUNTIME_DIR", runtime.path().toUtf8().constData(), 0);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("QT_QUICK_BACKEND", "software", 0);
    vorn::testing::Setup setup;
    return quick_test_main_with_setup(argc, argv, "Components", COMPONENT_TESTS, &setup);
}

#include "ComponentsMain.moc"
