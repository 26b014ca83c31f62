#include "VornMac/Drawing/QRModules.h"
#include "VornMac/Drawing/CodeShape.h"
#include "tests/VornMac/Drawing/Drawn.h"
#include "tests/VornMac/Window/CodeReader.h"

#include <algorithm>
#include <vector>

#include <QPainter>

#include <gmock/gmock.h>

namespace vorn {
namespace {

constexpr QSize side(316, 316);

/// `payload` as the screen shows it, on a white ground.
QImage code(const QString& payload, double pixelRatio, QSize size = side)
{
    QRModules modules;
    modules.setProperty("payload", payload);
    QImage picture((QSizeF(size) * pixelRatio).toSize(), QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.drawImage(0, 0, testing::drawn(modules, size, pixelRatio));
    return picture;
}

const QString& plausible()
{
    static const QString payload = "vorn://link?code=" + QString(300, 'x');
    return payload;
}

TEST(QRModules, AreWholePixelsAtEveryPixelRatio)
{
    for (const QString& payload : {QString("vorn://link/abc"), plausible()}) {
        for (const double ratio : {1.0, 1.5, 2.0}) {
            SCOPED_TRACE(::testing::Message() << payload.size() << " characters, " << ratio);
            const QImage picture = code(payload, ratio);
            std::vector<int> edges; // the lengths of runs in rows: multiples of a module
            int shortest = picture.width();
            for (int y = 0; y < picture.height(); ++y) {
                int last = -1;
                for (int x = 1; x < picture.width(); ++x) {
                    const QRgb pixel = picture.pixel(x, y);
                    ASSERT_TRUE(pixel == qRgb(0, 0, 0) || pixel == qRgb(255, 255, 255)) << "blurred";
                    if (pixel == picture.pixel(x - 1, y)) continue;
                    if (last >= 0) {
                        edges.push_back(x - last);
                        shortest = std::min(shortest, x - last);
                    }
                    last = x;
                }
            }
            ASSERT_FALSE(edges.empty());
            for (const int run : edges) ASSERT_EQ(run % shortest, 0);
            EXPECT_GE(shortest, 2);
        }
    }
}

TEST(QRModules, KeepFourLightModulesAround)
{
    const QImage picture = code("vorn://link/abc", 2);
    int left = picture.width();
    int shortest = picture.width();
    for (int y = 0; y < picture.height(); ++y) {
        int last = -1;
        for (int x = 1; x < picture.width(); ++x) {
            if (picture.pixel(x, y) == picture.pixel(x - 1, y)) continue;
            left = std::min(left, x);
            if (last >= 0) shortest = std::min(shortest, x - last);
            last = x;
        }
    }
    EXPECT_GE(left, 4 * shortest);
}

TEST(QRModules, AreReadAsWhatTheySay)
{
    for (const QString& payload :
         {QString("vorn://link/abc"), QString("vorn://link?name=Zoë’s Mac 李 🦊"), plausible(), QString("a")}) {
        for (const double ratio : {1.0, 1.5, 2.0}) {
            SCOPED_TRACE(::testing::Message() << payload.toStdString() << ", " << ratio);
            const auto read = testing::codeIn(code(payload, ratio));
            if (!read) GTEST_SKIP() << "there is no program to read codes with";
            EXPECT_EQ(*read, payload.toStdString());
        }
    }
}

TEST(QRModules, PaintNothingWithoutAPayload)
{
    QRModules modules;
    EXPECT_EQ(testing::paintedIn(testing::drawn(modules, side), {QPoint(), side}), 0);
    modules.setProperty("payload", "a");
    EXPECT_GT(testing::paintedIn(testing::drawn(modules, side), {QPoint(), side}), 0);
    modules.setProperty("payload", "");
    EXPECT_EQ(testing::paintedIn(testing::drawn(modules, side), {QPoint(), side}), 0);
}

TEST(QRModules, AppearAndGoInAWindowThatIsShown)
{
    QRModules modules;
    testing::Canvas canvas(modules, side, 1);
    for (const bool there : {false, true, false, true}) {
        modules.setProperty("payload", there ? "vorn://link/abc" : "");
        EXPECT_EQ(testing::paintedIn(canvas.frame(), {QPoint(), side}) > 0, there);
    }
}

TEST(QRModules, PaintNothingThatFitsNoCodeAndDoNotLogIt)
{
    static std::string logged;
    logged.clear();
    qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { logged += text.toStdString(); });
    QRModules modules;
    modules.setProperty("payload", "canary" + QString(3000, 'x'));
    EXPECT_EQ(testing::paintedIn(testing::drawn(modules, side), {QPoint(), side}), 0);
    qInstallMessageHandler(nullptr);
    EXPECT_EQ(logged, "a code is too long to be shown");
}

TEST(CodeShape, LooksLikeACodeInWhichThereIsNothing)
{
    for (const double ratio : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(ratio);
        CodeShape shape;
        const QImage ink = testing::drawn(shape, side, ratio);
        const double painted = testing::paintedIn(ink, ink.rect());
        EXPECT_GT(painted / (ink.width() * ink.height()), 0.2);
        QImage picture(ink.size(), QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter(&picture).drawImage(0, 0, ink);
        const auto read = testing::codeIn(picture);
        if (!read) GTEST_SKIP() << "there is no program to read codes with";
        EXPECT_EQ(*read, "");
    }
}

TEST(QRModules, TellOfAChangeOnce)
{
    QRModules modules;
    int changes = 0;
    QObject::connect(&modules, &QRModules::looksChanged, [&changes] { ++changes; });
    modules.setProperty("payload", "a");
    modules.setProperty("payload", "a");
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace vorn
