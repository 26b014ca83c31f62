#include "tests/VornMac/Window/HandDrivenAnimations.h"
#include "tests/VornMac/Window/Scenes.h"

#include <string_view>

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QQmlContext>
#include <QQmlExpression>
#include <QUrl>

// The drawn list of Full Disk Access.
namespace vorn::testing {
namespace {

/// The row `name` of the drawn list.
QQuickItem* row(WindowFixture& fix, const char* name)
{
    const auto items = itemsBelow(fix.window().contentItem(), [](QQuickItem* item) { return item->isVisible(); });
    for (QQuickItem* item : items) {
        if (std::string_view(item->metaObject()->className()).starts_with("AccessListRow_") &&
            item->property("name").toString() == name)
            return item;
    }
    ADD_FAILURE() << "there is no row " << name;
    return nullptr;
}

bool pulses(WindowFixture& fix)
{
    return row(fix, "Vorn")->property("isPulsing").toBool();
}

/// The URL that dragging the row `name` to the real list would drop there.
QUrl draggedFrom(WindowFixture& fix, const char* name)
{
    QQuickItem* item = row(fix, name);
    QQmlExpression dragged(qmlContext(item), item, QStringLiteral("String(Drag.mimeData['text/uri-list'] ?? '')"));
    return dragged.evaluate().toUrl();
}

TEST(AccessList, HandsOutTheApplicationsFile)
{
    WindowFixture fix;
    play(fix, "3-access-denied");
    EXPECT_EQ(draggedFrom(fix, "Vorn"), QUrl::fromLocalFile(QCoreApplication::applicationFilePath()));
    EXPECT_TRUE(draggedFrom(fix, "Terminal").isEmpty());
}

TEST(AccessList, PointsAtVornUntilItIsOn)
{
    for (const auto& [scene, expected] : {std::pair("3-access-denied", true), std::pair("3-access-no-database", false),
                                          std::pair("3-access-granted", false)}) {
        SCOPED_TRACE(scene);
        WindowFixture fix(WindowFixture::Motion::full);
        play(fix, scene);
        EXPECT_EQ(pulses(fix), expected);
        EXPECT_FALSE(row(fix, "Terminal")->property("isPulsing").toBool());
    }
}

TEST(AccessList, StandsStillWhereNobodySeesItOrWantsMotion)
{
    WindowFixture fix(WindowFixture::Motion::full);
    play(fix, "3-access-denied");
    ASSERT_TRUE(pulses(fix));
    fix.window().showMinimized();
    EXPECT_FALSE(row(fix, "Vorn")->property("isPulsing").toBool());
    fix.window().showNormal();
    EXPECT_TRUE(pulses(fix));
    Appearance::shared().setReducesMotion(true);
    EXPECT_FALSE(pulses(fix));
}

} // namespace
} // namespace vorn::testing
