#include "tests/VornMac/Model/AskingTokenStore.h"
#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

// The window before it knows who is signed in.
namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class KeychainNote : public ::testing::Test {
protected:
    KeychainNote() { fix_.model.store = keychain_; }

    void launchConsented()
    {
        keychain_->session = adasSession();
        fix_.model.defaults.setBoolean("consent.vorn-mac-nimbrel-1.user-ada", true);
        fix_.model.launch();
        fix_.settle();
    }
    void answer()
    {
        fix_.model.background.run();
        fix_.settle();
    }

    std::shared_ptr<AskingTokenStore> keychain_ = std::make_shared<AskingTokenStore>();
    WindowFixture fix_;
};

TEST_F(KeychainNote, SaysNothingWhereTheKeychainAnswersSoon)
{
    launchConsented();
    EXPECT_TRUE(fix_.window().isVisible());
    fix_.model.advance(499ms);
    fix_.settle();
    EXPECT_THAT(fix_.words(), IsEmpty());
    answer();
    EXPECT_THAT(fix_.words(), Contains("Looking in Messages…"));
    EXPECT_TRUE(fix_.shows("Account"));
    EXPECT_EQ(fix_.model.asked(ModelFixture::links), 0U) << "the link screen was never there";
}

TEST_F(KeychainNote, SaysWhatItWaitsFor)
{
    launchConsented();
    fix_.model.advance(500ms);
    fix_.settle();
    EXPECT_THAT(fix_.words(), ElementsAre("Waiting for your keychain…"));
    EXPECT_THAT(fix_.announced(), ElementsAre("Waiting for your keychain…"));
    fix_.model.advance(30s);
    fix_.settle();
    EXPECT_THAT(fix_.words(), ElementsAre("Waiting for your keychain…"));
    answer();
    EXPECT_THAT(fix_.words(), Contains("Looking in Messages…"));
    EXPECT_FALSE(fix_.shows("Waiting for your keychain…"));
}

TEST_F(KeychainNote, LeadsOnAfterARefusal)
{
    keychain_->refusal = KeychainError(KeychainError::userCanceled);
    launchConsented();
    answer();
    const std::string refused = "Your keychain is still locked, so Vorn can't tell whether this Mac is linked.";
    EXPECT_THAT(fix_.words(), ElementsAre(refused, "Try again", "Link this Mac again"));
    EXPECT_FALSE(fix_.shows("Account"));
    fix_.click("Try again");
    EXPECT_THAT(fix_.words(), ElementsAre("Waiting for your keychain…"));
    answer();
    EXPECT_THAT(fix_.words(), Contains(refused));
    keychain_->refusal.reset();
    fix_.click("Try again");
    answer();
    EXPECT_THAT(fix_.words(), Contains("Looking in Messages…"));
}

TEST_F(KeychainNote, LeavesTheKeyboardToTheScreenThatFollows)
{
    keychain_->refusal = KeychainError(KeychainError::userCanceled);
    launchConsented();
    answer();
    fix_.press(Qt::Key_Tab);
    EXPECT_EQ(fix_.focused(), "Try again");
    fix_.press(Qt::Key_Tab);
    EXPECT_EQ(fix_.focused(), "Link this Mac again");
    fix_.press(Qt::Key_Space);
    EXPECT_THAT(fix_.words(), Contains("Link your phone"));
    fix_.model.fail(ModelFixture::links, URLError::Code::notConnectedToInternet);
    fix_.settle();
    fix_.press(Qt::Key_Tab);
    EXPECT_EQ(fix_.focused(), "Try again");
    fix_.press(Qt::Key_Space);
    EXPECT_EQ(fix_.model.asked(ModelFixture::links), 2U);
}

} // namespace
} // namespace vorn::testing
