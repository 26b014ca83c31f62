#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

// No text is cut, covered or outside, at every size of the window and of text.
namespace vorn::testing {
namespace {

using namespace std::chrono_literals;

constexpr QSize sizes[] = {{1040, 700}, {1180, 760}, {1920, 1080}, {3840, 2160}};
constexpr double textScales[] = {1, 1.5};
constexpr double tolerance = 1; // glyphs extend a little beyond their box

QRectF grown(const QRectF& frame)
{
    return frame.adjusted(-tolerance, -tolerance, tolerance, tolerance);
}

void expectNothingCut(const std::vector<DrawnText>& texts)
{
    for (const DrawnText& text : texts) {
        SCOPED_TRACE(text.text.toStdString());
        EXPECT_FALSE(text.isCut);
        const QRectF room = grown(text.room);
        EXPECT_GE(text.frame.left(), room.left());
        EXPECT_LE(text.frame.right(), room.right());
        if (text.scrolls) continue;
        EXPECT_GE(text.frame.top(), room.top());
        EXPECT_LE(text.frame.bottom(), room.bottom());
    }
}

void expectNoOverlap(const std::vector<DrawnText>& texts)
{
    for (std::size_t one = 0; one < texts.size(); ++one) {
        for (std::size_t other = one + 1; other < texts.size(); ++other) {
            const QRectF shared = texts[one].visible & texts[other].visible;
            EXPECT_FALSE(shared.width() > tolerance && shared.height() > tolerance)
                << texts[one].text.toStdString() << " and " << texts[other].text.toStdString();
        }
    }
}

void expectGoodLayout(WindowFixture& fix)
{
    for (const double scale : textScales) {
        Appearance::shared().setTextScale(scale);
        for (const QSize& size : sizes) {
            SCOPED_TRACE(::testing::Message() << size.width() << "x" << size.height() << ", text " << scale);
            fix.window().resize(size);
            fix.lay();
            const auto texts = drawnTexts(fix.window());
            EXPECT_FALSE(texts.empty());
            expectNothingCut(texts);
            expectNoOverlap(texts);
        }
    }
}

TEST(Layout, CutsNothingInAnyScene)
{
    for (const Scene& scene : allScenes()) {
        SCOPED_TRACE(scene.name);
        WindowFixture fix;
        play(fix, scene.name);
        expectGoodLayout(fix);
    }
}

StoredSession longNamedSession()
{
    StoredSession session = adasSession();
    session.displayName = "Wolfeschlegelsteinhausenbergerdorff Maximiliana Konstantinopolitanska-Featherstonehaugh "
                          "Nebuchadnezzar von und zu der Mühlen";
    return session;
}

TEST(Layout, HoldsALongName)
{
    WindowFixture fix;
    fix.model.tokens->save(longNamedSession());
    fix.model.launch();
    fix.click("Account");
    EXPECT_TRUE(fix.shows("Signed in as " + QString::fromStdString(longNamedSession().displayName)));
    Appearance::shared().setTextScale(1.5);
    fix.lay();
    // The menu covers the screen, so only the menu is checked.
    for (const DrawnText& text : drawnTexts(fix.window())) {
        if (!text.text.startsWith("Sign")) continue;
        EXPECT_FALSE(text.isCut) << text.text.toStdString();
        EXPECT_TRUE(grown(text.room).contains(text.frame)) << text.text.toStdString();
    }
}

std::string longSentence()
{
    std::string text;
    for (int part = 0; part < 12; ++part) text += "The service is being looked after and will be back in a while. ";
    return text + std::string(90, 'w');
}

TEST(Layout, HoldsALongFailure)
{
    WindowFixture fix;
    fix.model.launchSignedIn();
    fix.model.answer(ModelFixture::quest, R"({"message":")" + longSentence() + R"("})", 500);
    fix.settle();
    ASSERT_TRUE(fix.shows(QString::fromStdString(longSentence()))) << ::testing::PrintToString(fix.names());
    expectGoodLayout(fix);
}

TEST(Layout, HoldsALongRewardAndDates)
{
    WindowFixture fix;
    for (int number = 0; number < 3; ++number) {
        fix.model.messages.message(
            {.text = std::string(139, 'W'), .date = (number == 0 ? -800'000'000LL : 8'000'000'000LL) * 1'000'000'000});
    }
    fix.model.launchSignedIn();
    fix.model.answer(
        ModelFixture::quest,
        R"({"quest":{"id":"quest-1","rewardUsd":123456789.5,"status":"rejected","rejectionReasonKey":"export_too_small"},"handles":["+15550102030"],"maxBytes":5000000000})");
    fix.model.runAll();
    fix.settle();
    ASSERT_TRUE(fix.shows("Found on this Mac Your Nimbrel chat"));
    expectGoodLayout(fix);
    fix.model.model().go(Step::consent);
    fix.settle();
    expectGoodLayout(fix);
}

TEST(Layout, HoldsALongAmount)
{
    WindowFixture fix;
    fix.model.launchDone();
    fix.model.advance(5s);
    fix.model.answer(
        ModelFixture::review,
        R"({"id":"sub-1","questId":"quest-1","status":"approved","rewardUsd":"123456789012.50","assetsRemaining":0})");
    fix.settle();
    ASSERT_TRUE(fix.shows("You earned $123456789012.50 Thanks for your Nimbrel chat"))
        << ::testing::PrintToString(fix.names());
    expectGoodLayout(fix);
}

TEST(Layout, IsTheSameInBothThemes)
{
    for (const Scene& scene : allScenes()) {
        SCOPED_TRACE(scene.name);
        WindowFixture fix;
        play(fix, scene.name);
        fix.lay();
        const auto light = drawnTexts(fix.window());
        Appearance::shared().setTheme(Appearance::Theme::dark);
        fix.lay();
        const auto dark = drawnTexts(fix.window());
        ASSERT_EQ(light.size(), dark.size());
        for (std::size_t index = 0; index < light.size(); ++index) {
            EXPECT_EQ(light[index].text, dark[index].text);
            EXPECT_EQ(light[index].frame, dark[index].frame) << light[index].text.toStdString();
        }
    }
}

} // namespace
} // namespace vorn::testing
