#include "VornMac/Drawing/AccentBar.h"
#include "VornMac/Drawing/BubbleShape.h"
#include "VornMac/Drawing/CheckMark.h"
#include "VornMac/Drawing/CornerBracket.h"
#include "VornMac/Drawing/FallingPaper.h"
#include "VornMac/Drawing/SoftShadow.h"
#include "VornMac/Drawing/Symbol.h"
#include "tests/VornMac/Drawing/Drawn.h"

#include <cstdlib>
#include <set>
#include <tuple>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using testing::drawn;
using testing::paintedIn;

TEST(Symbol, PaintsEveryNameInItsColour)
{
    const QColor red(200, 0, 0);
    for (const char* name : {"arrow.up.circle.fill",
                             "bubble.left.and.bubble.right",
                             "bubble.slash",
                             "checkmark",
                             "checkmark.circle.fill",
                             "chevron.down",
                             "chevron.left",
                             "chevron.right",
                             "exclamationmark.circle.fill",
                             "externaldrive",
                             "iphone.gen3.radiowaves.left.and.right",
                             "link",
                             "magnifyingglass",
                             "minus",
                             "paperclip",
                             "person.2.slash",
                             "person.fill",
                             "plus",
                             "shippingbox",
                             "stop.circle.fill",
                             "terminal",
                             "vorn.glyph",
                             "xmark.circle.fill"}) {
        SCOPED_TRACE(name);
        Symbol symbol;
        symbol.setProperty("name", name);
        symbol.setProperty("color", red);
        const QImage picture = drawn(symbol, {24, 24});
        int solid = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                if (pixel.alpha() < 250) continue;
                ++solid;
                EXPECT_EQ(pixel.rgb(), red.rgb());
            }
        }
        EXPECT_GT(solid, 10);
    }
}

TEST(Symbol, KeepsItsOwnColoursWithoutOne)
{
    Symbol symbol;
    symbol.setProperty("name", "vorn.glyph");
    symbol.setProperty("color", QColor(Qt::transparent));
    const QImage picture = drawn(symbol, {32, 32});
    std::set<QRgb> colours;
    for (int x = 0; x < 32; ++x) colours.insert(picture.pixel(x, 8));
    EXPECT_GT(colours.size(), 5U) << "a gradient";
}

TEST(Symbol, StaysInTheMiddleOfAWideItem)
{
    Symbol symbol;
    symbol.setProperty("name", "checkmark.circle.fill");
    symbol.setProperty("color", QColor(Qt::black));
    const QImage picture = drawn(symbol, {60, 20});
    EXPECT_EQ(paintedIn(picture, {0, 0, 19, 20}), 0);
    EXPECT_GT(paintedIn(picture, {20, 0, 20, 20}), 100);
    EXPECT_EQ(paintedIn(picture, {41, 0, 19, 20}), 0);
}

TEST(AccentBar, FillsAsFarAsItsValue)
{
    for (const auto& [value, filled] :
         {std::pair(-1.0, 0), std::pair(0.0, 0), std::pair(0.5, 100), std::pair(1.0, 200), std::pair(2.0, 200)}) {
        SCOPED_TRACE(value);
        AccentBar bar;
        bar.setProperty("startColor", QColor(255, 0, 0));
        bar.setProperty("endColor", QColor(0, 0, 255));
        bar.setProperty("trackColor", QColor(0, 255, 0));
        bar.setProperty("value", value);
        const QImage picture = drawn(bar, {200, 8});
        int count = 0;
        for (int x = 0; x < 200; ++x) {
            const bool isTrack = picture.pixelColor(x, 4).green() > 200;
            if (isTrack) EXPECT_GE(x, filled - 1) << "filled from the left, without a gap";
            count += isTrack ? 0 : 1;
        }
        EXPECT_NEAR(count, filled, 1);
    }
}

TEST(AccentBar, HasALightRunAlongIt)
{
    for (const auto& [sweep, from, to] : {std::tuple(-1.0, 0, 0), std::tuple(0.0, 0, 0), std::tuple(0.5, 70, 130),
                                          std::tuple(0.9, 174, 200), std::tuple(1.0, 200, 200)}) {
        SCOPED_TRACE(sweep);
        AccentBar bar;
        bar.setProperty("startColor", QColor(255, 0, 0));
        bar.setProperty("endColor", QColor(0, 0, 255));
        bar.setProperty("trackColor", QColor(0, 255, 0));
        bar.setProperty("value", 0);
        bar.setProperty("sweep", sweep);
        const QImage picture = drawn(bar, {200, 8});
        for (int x = 0; x < 200; ++x) {
            const bool isEdge = std::abs(x - from) <= 2 || std::abs(x - to) <= 2;
            if (!isEdge) EXPECT_EQ(picture.pixelColor(x, 4).green() < 200, x > from && x < to) << x;
        }
    }
}

TEST(AccentBar, RunsFromOneColourToTheOther)
{
    AccentBar bar;
    bar.setProperty("startColor", QColor(255, 0, 0));
    bar.setProperty("endColor", QColor(0, 0, 255));
    const QImage picture = drawn(bar, {200, 8});
    EXPECT_GT(picture.pixelColor(8, 4).red(), 230);
    EXPECT_NEAR(picture.pixelColor(100, 4).red(), 128, 4);
    EXPECT_GT(picture.pixelColor(191, 4).blue(), 230);
}

/// The number of nearly white pixels in `picture`.
int whiteIn(const QImage& picture)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) count += picture.pixelColor(x, y).red() > 200 ? 1 : 0;
    return count;
}

TEST(CheckMark, GrowsItsDiscAndThenWritesItsCheck)
{
    CheckMark mark;
    mark.setProperty("color", QColor(0, 120, 0));
    mark.setProperty("inkColor", QColor(Qt::white));
    int disc = 0;
    int check = 0;
    for (const double progress : {0.0, 0.2, 0.45, 0.6, 0.75, 0.9, 1.0}) {
        SCOPED_TRACE(progress);
        mark.setProperty("progress", progress);
        const QImage picture = drawn(mark, {56, 56});
        const int painted = paintedIn(picture, picture.rect());
        const int white = whiteIn(picture);
        EXPECT_TRUE(progress == 0 ? painted == 0 : progress <= 0.45 ? painted > disc : painted == disc);
        EXPECT_TRUE(progress <= 0.45 ? white == 0 : white > check);
        disc = painted;
        check = white;
    }
    EXPECT_NEAR(disc, 28 * 28 * 3.14, 120) << "the whole disc";
}

TEST(FallingPaper, FallsOnceFromTheTopToTheBottom)
{
    FallingPaper paper;
    paper.setProperty("startColor", QColor(200, 0, 0));
    paper.setProperty("endColor", QColor(0, 0, 200));
    const auto middleAt = [&](double progress) {
        paper.setProperty("progress", progress);
        const QImage picture = drawn(paper, {440, 620});
        double sum = 0;
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            const int painted = paintedIn(picture, QRect(0, y, picture.width(), 1));
            sum += double(painted) * y;
            count += painted;
        }
        return count > 0 ? sum / count : -1;
    };
    EXPECT_EQ(middleAt(0), -1);
    double before = 0;
    for (const double progress : {0.1, 0.3, 0.5, 0.7, 0.9}) {
        EXPECT_GT(middleAt(progress), before) << progress;
        before = middleAt(progress);
    }
    EXPECT_EQ(middleAt(1), -1);
}

TEST(FallingPaper, HasTheColoursBetweenItsTwo)
{
    FallingPaper paper;
    paper.setProperty("startColor", QColor(200, 0, 0));
    paper.setProperty("endColor", QColor(0, 0, 200));
    paper.setProperty("progress", 0.5);
    const QImage picture = drawn(paper, {440, 620}).convertToFormat(QImage::Format_ARGB32);
    std::set<int> reds;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            if (colour.alpha() < 255) continue;
            EXPECT_NEAR(colour.red() + colour.blue(), 200, 2);
            reds.insert(colour.red() / 20);
        }
    }
    EXPECT_GE(reds.size(), 5U);
}

TEST(BubbleShape, HasItsTailOnTheSideThatSpeaks)
{
    struct Case {
        BubbleShape::Tail tail;
        bool left, right;
    };
    for (const Case& row : {Case{BubbleShape::NoTail, false, false}, Case{BubbleShape::LeftTail, true, false},
                            Case{BubbleShape::RightTail, false, true}}) {
        SCOPED_TRACE(row.tail);
        BubbleShape bubble;
        bubble.setProperty("color", QColor(Qt::blue));
        bubble.setProperty("tail", row.tail);
        const QImage picture = drawn(bubble, {120, 40});
        EXPECT_EQ(paintedIn(picture, {0, 0, 5, 40}) > 0, row.left);
        EXPECT_EQ(paintedIn(picture, {115, 0, 5, 40}) > 0, row.right);
        EXPECT_EQ(picture.pixelColor(60, 20), QColor(Qt::blue));
    }
}

TEST(BubbleShape, CurlsItsTailWithoutANotch)
{
    BubbleShape bubble;
    bubble.setProperty("color", QColor(Qt::blue));
    bubble.setProperty("tail", BubbleShape::RightTail);
    const QImage picture = drawn(bubble, {120, 40});
    const auto reach = [&](int y) { // the last opaque pixel of the row
        int x = 119;
        while (picture.pixelColor(x, y).alpha() < 128) --x;
        return x;
    };
    for (int y = 20; y < 39; ++y) EXPECT_GE(reach(y + 1), reach(y)) << "outwards all the way down, at " << y;
    EXPECT_GE(reach(39), 116);
    for (int x = 30; x < 112; ++x) EXPECT_GT(picture.pixelColor(x, 38).alpha(), 250) << "flat below, at " << x;
}

TEST(CornerBracket, TurnsInItsOwnCorner)
{
    for (const bool isRight : {false, true}) {
        for (const bool isBottom : {false, true}) {
            SCOPED_TRACE(::testing::Message() << isRight << isBottom);
            CornerBracket bracket;
            bracket.setProperty("radius", 10);
            bracket.setProperty("thickness", 4);
            bracket.setProperty("isRight", isRight);
            bracket.setProperty("isBottom", isBottom);
            const QImage picture = drawn(bracket, {40, 40}).mirrored(isRight, isBottom);
            EXPECT_GT(paintedIn(picture, {0, 20, 4, 19}), 70) << "down";
            EXPECT_GT(paintedIn(picture, {20, 0, 19, 4}), 70) << "across";
            EXPECT_EQ(paintedIn(picture, {0, 0, 2, 2}), 0) << "round";
            EXPECT_EQ(paintedIn(picture, {10, 10, 30, 30}), 0);
        }
    }
}

TEST(SoftShadow, FadesOutwardsWithoutAnEdge)
{
    for (const double ratio : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(ratio);
        SoftShadow shadow;
        shadow.setProperty("blur", 20);
        shadow.setProperty("radius", 10);
        shadow.setProperty("color", QColor(0, 0, 0, 128));
        const QImage picture = drawn(shadow, {140, 140}, ratio);
        const int middle = picture.height() / 2;
        int before = 0;
        for (int x = 0; x <= middle; ++x) { // from the outer edge inwards
            const int alpha = qAlpha(picture.pixel(x, middle));
            EXPECT_GE(alpha, before) << x;
            EXPECT_LE(alpha, before + 13) << x << ": no edge is seen";
            before = alpha;
        }
        EXPECT_NEAR(before, 128, 1);
        const QImage mirrored = picture.mirrored(true, true);
        for (int x = 0; x < picture.width(); ++x)
            EXPECT_NEAR(qAlpha(picture.pixel(x, middle)), qAlpha(mirrored.pixel(x, middle)), 3) << x;
    }
}

} // namespace
} // namespace vorn
