#include "VornMac/Application/WindowGeometry.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using State = WindowGeometry::State;

const QRect screen(0, 25, 1920, 1055);

TEST(WindowGeometry, IsReadAsItWasWritten)
{
    for (const State state : {State::normal, State::maximized, State::fullScreen}) {
        const WindowGeometry geometry{.content = QRect(-1300, 60, 1180, 760), .state = state};
        SCOPED_TRACE(geometry.text());
        EXPECT_EQ(WindowGeometry::fromText(geometry.text()), geometry);
    }
    EXPECT_EQ((WindowGeometry{.content = QRect(1, 2, 3, 4)}.text()), "1 2 3 4");
    EXPECT_EQ((WindowGeometry{.content = QRect(1, 2, 3, 4), .state = State::fullScreen}.text()), "1 2 3 4 fullScreen");
}

TEST(WindowGeometry, IsNotReadFromAnythingElse)
{
    for (const char* text : {"", "1 2 3", "a b c d", "1 2 3 4 minimized", "1 2 3 4 maximized 5", "1 2 3 4 5",
                             "99999999999 0 1180 760", "0 0 2147483647 760", "0,0,1180,760"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(WindowGeometry::fromText(text), std::nullopt);
    }
}

TEST(WindowGeometry, FitsWhereItsTopEdgeCanBeTakenHoldOf)
{
    struct Case {
        const char* name;
        QRect content;
        bool fits;
    };
    for (const auto& [name, content, fits] : {
             Case{"in the middle", {370, 160, 1180, 760}, true},
             Case{"smallest", {0, 25, 1040, 700}, true},
             Case{"too narrow", {0, 25, 1039, 700}, false},
             Case{"too low", {0, 25, 1040, 699}, false},
             Case{"hangs out to the right", {1800, 160, 1180, 760}, true},
             Case{"hardly seen at the right", {1801, 160, 1180, 760}, false},
             Case{"hangs out to the left", {-1060, 160, 1180, 760}, true},
             Case{"hardly seen at the left", {-1061, 160, 1180, 760}, false},
             Case{"hangs out below", {370, 1056, 1180, 760}, true},
             Case{"hardly seen below", {370, 1057, 1180, 760}, false},
             Case{"its top edge is above the screen", {370, -700, 1180, 760}, false},
             Case{"on a screen that has gone", {2500, 160, 1180, 760}, false},
         }) {
        SCOPED_TRACE(name);
        EXPECT_EQ(WindowGeometry{.content = content}.fits({screen}), fits);
    }
}

TEST(WindowGeometry, FitsOnAnyScreen)
{
    const WindowGeometry geometry{.content = QRect(2500, 160, 1180, 760)};
    EXPECT_TRUE(geometry.fits({screen, QRect(1920, 0, 1920, 1080)}));
    EXPECT_FALSE(geometry.fits({}));
}

TEST(WindowGeometry, IsCentredAtFirst)
{
    EXPECT_EQ(WindowGeometry::centredOn(screen), (WindowGeometry{.content = QRect(370, 173, 1180, 760)}));
}

TEST(WindowGeometry, ShrinksToASmallScreenButNotBelowTheMinimum)
{
    EXPECT_EQ(WindowGeometry::centredOn(QRect(0, 0, 1100, 720)).content, QRect(0, 0, 1100, 720));
    EXPECT_EQ(WindowGeometry::centredOn(QRect(10, 20, 800, 600)).content, QRect(10, 20, 1040, 700))
        << "where its buttons can be reached";
}

} // namespace
} // namespace vorn
