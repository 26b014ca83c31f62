#include "VornMac/Application/GeometryKeeper.h"

#include "tests/VornMac/Application/KeptDefaults.h"

#include <QGuiApplication>
#include <QScreen>
#include <gtest/gtest.h>

namespace vorn {
namespace {

struct GeometryKeeperTest : ::testing::Test {
    testing::KeptDefaults defaults;

    void keep(const std::string& text) { defaults.texts[GeometryKeeper::defaultsKey] = text; }
    std::string kept() const { return defaults.text(GeometryKeeper::defaultsKey).value_or("nothing"); }
    static QRect firstPlace()
    {
        return WindowGeometry::centredOn(QGuiApplication::primaryScreen()->availableGeometry()).content;
    }
};

TEST_F(GeometryKeeperTest, CentresTheFirstWindow)
{
    QWindow window;
    GeometryKeeper keeper(window, defaults);
    EXPECT_EQ(window.geometry(), firstPlace());
    EXPECT_EQ(window.minimumSize(), QSize(1040, 700));
    EXPECT_FALSE(window.isVisible());
    keeper.show();
    EXPECT_EQ(window.visibility(), QWindow::Windowed);
    EXPECT_EQ(kept(), "nothing");
}

TEST_F(GeometryKeeperTest, BringsTheWindowWhereItWas)
{
    keep("30 40 1100 720");
    QWindow window;
    const GeometryKeeper keeper(window, defaults);
    EXPECT_EQ(window.geometry(), QRect(30, 40, 1100, 720));
}

TEST_F(GeometryKeeperTest, RejectsWhatCannotBeUsed)
{
    for (const char* text : {"30 40 1000 720", "30 40 1100 600", "9000 40 1100 720", "nonsense"}) {
        SCOPED_TRACE(text);
        keep(text);
        QWindow window;
        const GeometryKeeper keeper(window, defaults);
        EXPECT_EQ(window.geometry(), firstPlace());
    }
}

TEST_F(GeometryKeeperTest, KeepsWhereTheWindowIs)
{
    QWindow window;
    GeometryKeeper keeper(window, defaults);
    keeper.show();
    window.setGeometry(50, 60, 1200, 800);
    keeper.save();
    EXPECT_EQ(kept(), "50 60 1200 800");
}

TEST_F(GeometryKeeperTest, KeepsWhereTheWindowWasClosed)
{
    QWindow window;
    GeometryKeeper keeper(window, defaults);
    keeper.show();
    window.setGeometry(50, 60, 1200, 800);
    window.close();
    keeper.save();
    EXPECT_EQ(kept(), "50 60 1200 800");
}

TEST_F(GeometryKeeperTest, RemembersStates)
{
    struct Case {
        QWindow::Visibility visibility;
        std::string text;
    };
    for (const auto& [visibility, text] :
         {Case{QWindow::Maximized, "30 40 1100 720 maximized"}, Case{QWindow::FullScreen, "30 40 1100 720 fullScreen"},
          Case{QWindow::Windowed, "30 40 1100 720"}}) {
        SCOPED_TRACE(text);
        keep("30 40 1100 720");
        {
            QWindow window;
            GeometryKeeper keeper(window, defaults);
            keeper.show();
            window.setVisibility(visibility);
            keeper.save();
            EXPECT_EQ(kept(), text) << "with the place to go back to";
        }
        QWindow next;
        GeometryKeeper keeper(next, defaults);
        keeper.show();
        EXPECT_EQ(next.visibility(), visibility);
        keeper.save();
        EXPECT_EQ(kept(), text);
    }
}

TEST_F(GeometryKeeperTest, AMinimisedOrClosedWindowComesBackWhereItWas)
{
    keep("30 40 1100 720");
    for (const auto visibility : {QWindow::Minimized, QWindow::Hidden}) {
        QWindow window;
        GeometryKeeper keeper(window, defaults);
        keeper.show();
        window.setVisibility(visibility);
        keeper.save();
        EXPECT_EQ(kept(), "30 40 1100 720");
    }
}

} // namespace
} // namespace vorn
