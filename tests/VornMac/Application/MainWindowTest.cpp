#include "VornMac/Application/MainWindow.h"

#include "tests/VornMac/Application/KeptDefaults.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <QGuiApplication>
#include <QTest>
#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::HasSubstr;

constexpr const char* window = "import QtQuick\nWindow { property int answer }\n";

struct MainWindowTest : ::testing::Test {
    testing::TemporaryFolder folder;
    testing::KeptDefaults defaults;
    int quits = 0;

    std::unique_ptr<MainWindow> make(const std::string& source, const QVariantMap& properties = {})
    {
        testing::writeFile(folder / "Main.qml", source);
        return std::make_unique<MainWindow>(QUrl::fromLocalFile(QString::fromStdString(folder / "Main.qml")),
                                            properties, defaults, [this] { ++quits; });
    }
    std::string failureOf(const std::string& source)
    {
        try {
            make(source);
        } catch (const WindowError& error) {
            return error.what();
        }
        return "none";
    }
    std::unique_ptr<MainWindow> shown()
    {
        auto made = make(window);
        made->show([] {});
        made->bringToFront();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&made->window()));
        return made;
    }
};

TEST_F(MainWindowTest, ShowsWhatItsFileDescribes)
{
    const auto made = make(window, {{"answer", 42}});
    EXPECT_EQ(made->window().property("answer"), 42);
    EXPECT_FALSE(made->window().isVisible());
    EXPECT_EQ(QQuickWindow::textRenderType(), QQuickWindow::NativeTextRendering);
    int frames = 0;
    made->show([&frames] { ++frames; });
    EXPECT_TRUE(made->window().isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&frames] { return frames > 0; }));
    made->window().update();
    QCoreApplication::processEvents();
    EXPECT_EQ(frames, 1) << "the first one alone";
}

TEST_F(MainWindowTest, SaysWhatIsWrongWithItsFile)
{
    struct Case {
        std::string source, part;
    };
    for (const auto& [source, part] : {
             Case{"import QtQuick\nimport Vorn.Missing\nWindow {}", "Main.qml:2:1: module \"Vorn.Missing\""},
             Case{"import QtQuick\nWindow { x: }", "Main.qml:2:13: Expected token"},
             Case{"import QtQuick\nWindow { required property int missing }",
                  "Main.qml:2:10: Required property missing"},
             Case{"import QtQuick\nItem {}", "Main.qml is not a window"},
         }) {
        SCOPED_TRACE(source);
        EXPECT_THAT(failureOf(source), HasSubstr(part));
    }
}

TEST_F(MainWindowTest, SaysThatItsFileIsMissing)
{
    try {
        const MainWindow made(QUrl("qrc:/qt/qml/Vorn/Missing.qml"), {}, defaults, [] {});
        FAIL();
    } catch (const WindowError& error) {
        EXPECT_THAT(error.what(), HasSubstr("qrc:/qt/qml/Vorn/Missing.qml: No such file"));
    }
}

TEST_F(MainWindowTest, ComesToTheFrontFromTheDock)
{
    const auto made = shown();
    made->window().showMinimized();
    QWindow other;
    other.show();
    other.requestActivate();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
    made->bringToFront();
    EXPECT_EQ(made->window().visibility(), QWindow::Windowed);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&made->window()));
}

TEST_F(MainWindowTest, ComesToTheFrontWithTheTokenThatLetsIt)
{
    const testing::ScopedEnvironment token("XDG_ACTIVATION_TOKEN", "");
    const auto made = shown();
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "");
    made->bringToFront("token-1");
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-1"); // without Wayland, nothing consumes it
}

TEST_F(MainWindowTest, StaysMaximisedWhenItComesToTheFront)
{
    const auto made = shown();
    made->window().showMaximized();
    made->window().setWindowStates(Qt::WindowMaximized | Qt::WindowMinimized);
    made->bringToFront();
    EXPECT_EQ(made->window().visibility(), QWindow::Maximized);
}

TEST_F(MainWindowTest, KeepsItsPlaceWhenItGoes)
{
    const auto made = shown();
    made->window().setGeometry(20, 30, 1100, 720);
    made->dismiss();
    EXPECT_FALSE(made->window().isVisible());
    EXPECT_EQ(defaults.text(GeometryKeeper::defaultsKey), "20 30 1100 720");
}

TEST_F(MainWindowTest, ClosesQuitsAndMinimisesByKeys)
{
    const auto made = shown();
    QTest::keyClick(&made->window(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(quits, 1);
    QTest::keyClick(&made->window(), Qt::Key_M, Qt::ControlModifier);
    EXPECT_EQ(made->window().visibility(), QWindow::Minimized);
    made->bringToFront();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&made->window()));
    QTest::keyClick(&made->window(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(made->window().isVisible());
    EXPECT_EQ(quits, 1) << "that is for who owns the window";
}

} // namespace
} // namespace vorn
