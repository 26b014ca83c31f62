#include "tests/VornMac/Window/HandDrivenAnimations.h"
#include "tests/VornMac/Window/Scenes.h"

#include <map>
#include <string_view>

#include <gmock/gmock.h>

// The parts that keep their places while the content changes.
namespace vorn::testing {
namespace {

/// Whether `item` is of QML's type `type`, or of one derived from it.
bool is(const QQuickItem* item, const std::string& type)
{
    for (const QMetaObject* meta = item->metaObject(); meta != nullptr; meta = meta->superClass()) {
        if (std::string_view(meta->className()).starts_with(type + "_QMLTYPE")) return true;
    }
    return false;
}

/// The shown items of QML's type `type`.
std::vector<QQuickItem*> itemsOf(WindowFixture& fix, const std::string& type)
{
    auto items = itemsBelow(fix.window().contentItem(), [](QQuickItem* item) { return item->isVisible(); });
    std::erase_if(items, [&](const QQuickItem* item) { return !is(item, type); });
    return items;
}

/// The fades at a scrolling form's edges, the upper one first.
std::vector<QQuickItem*> formFades(WindowFixture& fix)
{
    auto fades = itemsOf(fix, "EdgeFade");
    std::erase_if(fades, [](const QQuickItem* fade) { return !is(fade->parentItem(), "ScrollingForm"); });
    return fades;
}

QRectF frameOf(const QQuickItem* item)
{
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

/// The corner of each part that keeps its place.
using Places = std::map<std::string, QPointF>;

Places placesIn(WindowFixture& fix)
{
    Places places;
    for (const char* type : {"StepDots", "TwoToneTitle", "PreviewPanel"}) {
        const auto items = itemsOf(fix, type);
        if (items.size() == 1) places[type] = frameOf(items.front()).topLeft();
    }
    for (const auto* item : itemsOf(fix, "PrimaryButtonStyle")) places["primary"] = frameOf(item).bottomRight();
    for (const auto* item : itemsOf(fix, "BackButtonStyle")) places["back"] = frameOf(item).bottomLeft();
    const auto* panel = fix.window().findChild<QQuickItem*>("panel");
    places["panel"] = frameOf(panel).topLeft();
    places["panel's end"] = frameOf(panel).bottomRight();
    return places;
}

/// No steps are shown before the first one, nor on the page that covers a step.
bool hasSteps(const Scene& scene)
{
    return !scene.name.starts_with("0-") && !scene.name.starts_with("4-find-everything");
}

TEST(Skeleton, StandsAtOnePlaceInEveryPhase)
{
    std::map<int, Places> all; // by the window's width
    for (const Scene& scene : allScenes()) {
        if (!hasSteps(scene)) continue;
        WindowFixture fix;
        scene.play(fix);
        for (const QSize& size : {QSize(1040, 700), QSize(1180, 760), QSize(2560, 1440)}) {
            SCOPED_TRACE(::testing::Message() << scene.name << " at " << size.width());
            fix.window().resize(size);
            fix.lay();
            const Places places = placesIn(fix);
            for (const char* part : {"StepDots", "TwoToneTitle", "PreviewPanel"})
                EXPECT_TRUE(places.contains(part)) << part;
            for (const auto& [part, place] : places)
                EXPECT_EQ(all[size.width()].try_emplace(part, place).first->second, place) << part;
        }
    }
    for (const auto& [width, places] : all) EXPECT_TRUE(places.contains("primary") && places.contains("back")) << width;
}

TEST(Skeleton, BeginsAndEndsWithThePanel)
{
    WindowFixture fix;
    play(fix, "4-find-found");
    fix.window().resize(1180, 760);
    fix.lay();
    Places places = placesIn(fix);
    EXPECT_EQ(places["StepDots"], QPointF(40, 112));
    EXPECT_EQ(places["TwoToneTitle"], QPointF(40, 140));
    EXPECT_EQ(places["panel"], QPointF(698, 96));
    EXPECT_EQ(places["panel's end"], QPointF(1138, 716));
    EXPECT_EQ(places["primary"], QPointF(520, 716));
    EXPECT_EQ(places["back"].y(), 716);
}

TEST(Skeleton, KeepsMarkAndAccountAtTheContentsEdges)
{
    WindowFixture fix;
    play(fix, "4-find-found");
    for (const QSize& size : {QSize(1040, 700), QSize(1180, 760), QSize(1920, 1080), QSize(3840, 2160)}) {
        SCOPED_TRACE(size.width());
        fix.window().resize(size);
        fix.lay();
        Places places = placesIn(fix);
        const QRectF mark = frameOf(itemsOf(fix, "VornGlyph").front());
        const QRectF account = frameOf(fix.named("Account"));
        const QRectF form = frameOf(itemsOf(fix, "StatisticsCard").front());
        EXPECT_NEAR(mark.left() + mark.width() / 12, places["StepDots"].x(), 0.01) << "the ink, not its box";
        EXPECT_EQ(form.left(), places["StepDots"].x());
        EXPECT_EQ(account.right(), places["panel's end"].x());
        EXPECT_EQ(account.top(), places["panel"].y() - 60);
        EXPECT_LE(places["panel's end"].x() - places["StepDots"].x(), 1280) << "it keeps together";
        if (size.width() > 1180) EXPECT_GT(form.width(), 480) << "it grows";
    }
}

TEST(Skeleton, LinesUpTheFiguresOfTheChat)
{
    WindowFixture fix;
    play(fix, "4-find-found");
    fix.lay();
    const auto rows = itemsOf(fix, "StatisticsRow");
    ASSERT_EQ(rows.size(), 4U);
    for (const QQuickItem* row : rows) {
        EXPECT_EQ(row->height(), 44);
        std::vector<double> baselines;
        for (const QQuickItem* child : row->childItems()) {
            if (is(child, "Words") || is(child, "DigitText")) baselines.push_back(child->y() + child->baselineOffset());
        }
        ASSERT_EQ(baselines.size(), 2U);
        EXPECT_NEAR(baselines[0], baselines[1], 0.01);
    }
}

TEST(Skeleton, KeepsThePanelOutOfTheFade)
{
    HandDrivenAnimations animations;
    WindowFixture fix(WindowFixture::Motion::full);
    play(fix, "4-find-found");
    animations.pass(1000);
    fix.model.model().go(Step::consent);
    fix.settle();
    animations.pass(100);
    EXPECT_EQ(itemsOf(fix, "TwoToneTitle").size(), 2U) << "one that goes and one that comes";
    const auto* panel = fix.window().findChild<QQuickItem*>("panel");
    ASSERT_TRUE(panel->isVisible());
    for (const QQuickItem* around = panel; around != nullptr; around = around->parentItem())
        EXPECT_EQ(around->opacity(), 1);
    animations.pass(1000);
}

TEST(Skeleton, ShowsThatAFormScrolls)
{
    for (const auto& [scale, scrolls] : {std::pair(1.0, false), std::pair(1.5, true)}) {
        WindowFixture fix;
        play(fix, "2-consent");
        Appearance::shared().setTextScale(scale);
        fix.window().resize(fix.window().minimumSize());
        fix.lay();
        const auto* form = itemsOf(fix, "ScrollingForm").front();
        EXPECT_EQ(form->property("scrolls").toBool(), scrolls);
        const auto fades = formFades(fix);
        ASSERT_EQ(fades.size(), 2U);
        EXPECT_EQ(fades.front()->opacity(), 0) << "nothing is above";
        EXPECT_EQ(fades.back()->opacity(), scrolls ? 1 : 0);
    }
}

TEST(Skeleton, FadesALongChatAtItsTop)
{
    WindowFixture fix;
    play(fix, "4-find-long-chat");
    fix.lay();
    const QRectF thread = frameOf(itemsOf(fix, "MessageThread").front());
    const auto fades = itemsOf(fix, "EdgeFade");
    const auto top = std::find_if(fades.begin(), fades.end(),
                                  [&](const QQuickItem* fade) { return frameOf(fade).topLeft() == thread.topLeft(); });
    ASSERT_NE(top, fades.end());
    EXPECT_EQ(frameOf(*top).size(), QSizeF(thread.width(), 32));
    EXPECT_EQ((*top)->opacity(), 1);
    const QImage picture = fix.picture();
    const auto card = fix.theme().property("card").value<QColor>();
    const int y = qCeil(thread.top()); // below the header's line
    for (int x = int(thread.left()) + 1; x < int(thread.right()); ++x) {
        const QColor pixel = picture.pixelColor(x, y);
        ASSERT_NEAR(pixel.green(), card.green(), 8) << x; // at most a pixel below the top
    }
}

TEST(Skeleton, TurnsAFormsPagesByKey)
{
    WindowFixture fix;
    play(fix, "2-consent");
    Appearance::shared().setTextScale(1.5);
    fix.window().resize(fix.window().minimumSize());
    fix.lay();
    const auto fades = formFades(fix);
    fix.press(Qt::Key_Tab);
    for (int presses = 0; presses < 4; ++presses) fix.press(Qt::Key_PageUp);
    EXPECT_EQ(fades.front()->opacity(), 0);
    EXPECT_EQ(fades.back()->opacity(), 1);
    for (int presses = 0; presses < 4; ++presses) fix.press(Qt::Key_PageDown);
    EXPECT_EQ(fades.front()->opacity(), 1);
    EXPECT_EQ(fades.back()->opacity(), 0) << "the end is reached";
}

} // namespace
} // namespace vorn::testing
