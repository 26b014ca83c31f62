#include "VornMac/Text/AccessText.h"
#include "VornMac/Text/AccountText.h"
#include "VornMac/Text/FindText.h"
#include "VornMac/Text/LinkText.h"
#include "VornMac/Text/UploadText.h"

#include <gmock/gmock.h>

// The parts that depend on state. All texts of all screens are tested with the screens.
namespace vorn {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(LinkText, FollowsThePhase)
{
    struct Case {
        LinkPhase phase;
        StatusText status;
        const char* retry;
    };
    for (const Case& each : {
             Case{phase::Loading{}, {Tone::waiting, "Getting a code…"}, ""},
             Case{phase::Showing{}, {Tone::waiting, "Waiting for your phone"}, ""},
             Case{phase::Scanned{}, {Tone::good, "Scanned. Confirm Link this Mac on your phone."}, ""},
             Case{phase::Rejected{}, {Tone::warning, "Your phone declined the link. Here's a new code."}, ""},
             Case{phase::Failed{"No."}, {Tone::bad, "No."}, "Try again"},
         }) {
        EXPECT_EQ(linkText(each.phase).status, each.status);
        EXPECT_EQ(linkText(each.phase).retry, each.retry);
    }
}

TEST(ClockText, HasTwoDigitsForSeconds)
{
    EXPECT_EQ(clockText(0), "0:00");
    EXPECT_EQ(clockText(118), "1:58");
    EXPECT_EQ(clockText(3605), "60:05");
}

TEST(AccessText, HelpsOnlyWhileAccessIsMissing)
{
    const ScreenText denied = accessText(FullDiskAccessStatus::denied);
    EXPECT_EQ(denied.status, (StatusText{Tone::waiting, "Waiting for access…"}));
    EXPECT_EQ(denied.retry, "Quit & Reopen Vorn");
    EXPECT_EQ(denied.note, "Turned on but still waiting? Quit and reopen Vorn. After an update macOS can forget the "
                           "switch: turn Vorn off and on again.");
    for (const auto status : {FullDiskAccessStatus::granted, FullDiskAccessStatus::noDatabase}) {
        EXPECT_EQ(accessText(status).retry, "");
        EXPECT_EQ(accessText(status).note, "");
    }
    EXPECT_EQ(accessText(FullDiskAccessStatus::granted).primary, "Continue");
    for (const auto status : {FullDiskAccessStatus::denied, FullDiskAccessStatus::noDatabase})
        EXPECT_EQ(accessText(status).primary, "Open System Settings");
    EXPECT_EQ(accessText(FullDiskAccessStatus::granted).status, (StatusText{Tone::good, "Access granted."}));
    EXPECT_EQ(accessText(FullDiskAccessStatus::noDatabase).status,
              (StatusText{Tone::warning, "Messages isn't set up on this Mac. Sign in to Messages with the Apple ID you "
                                         "text Nimbrel from, then come back."}));
}

TEST(SwitchText, SaysHowASwitchStands)
{
    EXPECT_EQ(switchText("Vorn", true), "Vorn, on");
    EXPECT_EQ(switchText("Terminal", false), "Terminal, off");
}

TEST(FindText, FollowsThePhase)
{
    const StatusText reading{Tone::waiting, "Reading a private copy of your Messages history…"};
    struct Case {
        ScanPhase phase;
        const char* title;
        StatusText status;
        const char* retry;
    };
    for (const Case& each : {
             Case{phase::Idle{}, "Looking in Messages…", reading, ""},
             Case{phase::Loading{}, "Looking in Messages…", reading, ""},
             Case{phase::Unavailable{},
                  "Not available yet",
                  {Tone::warning, "Nimbrel export isn't available yet. Check back soon."},
                  "Look again"},
             Case{phase::NotConfigured{},
                  "Not available yet",
                  {Tone::warning, "Nimbrel export isn't set up yet. Try again later."},
                  "Look again"},
             Case{phase::NotFound{}, "Not found on this Mac", {}, "Look again"},
             Case{phase::Found{}, "Found on this Mac", {}, ""},
             Case{phase::Failed{"No."}, "Something went wrong", {Tone::bad, "No."}, "Look again"},
         }) {
        SCOPED_TRACE(each.title);
        const ScreenText text = findText(each.phase, std::nullopt);
        EXPECT_EQ(text.title, each.title);
        EXPECT_EQ(text.status, each.status);
        EXPECT_EQ(text.retry, each.retry);
        EXPECT_EQ(text.primary, text.retry.empty() ? "Upload chat" : ""); // only one of them continues
        EXPECT_THAT(text.hints, SizeIs(std::holds_alternative<phase::NotFound>(each.phase) ? 2 : 0));
    }
}

TEST(FindText, RemarksOnTheLastUploadOnceTheChatIsFound)
{
    const QuestAvailability availability(QuestAvailability::InReview{});
    EXPECT_EQ(findText(phase::Found{}, availability).remark,
              (StatusText{Tone::waiting, "Your last upload is being checked."}));
    EXPECT_EQ(findText(phase::Loading{}, availability).remark, StatusText{});
    EXPECT_EQ(findText(phase::Found{}, std::nullopt).remark, StatusText{});
}

TEST(FindText, CaptionsOnlyARealPreview)
{
    EXPECT_EQ(findText(phase::Found{}, std::nullopt).caption, "Only on this Mac. Nothing is uploaded yet.");
    for (const ScanPhase& phase :
         {ScanPhase(phase::Idle{}), ScanPhase(phase::Loading{}), ScanPhase(phase::Unavailable{}),
          ScanPhase(phase::NotConfigured{}), ScanPhase(phase::NotFound{}), ScanPhase(phase::Failed{"No."})}) {
        EXPECT_EQ(findText(phase, std::nullopt).caption, "");
        EXPECT_EQ(isLooking(phase), phase.index() < 2);
    }
    EXPECT_FALSE(isLooking(phase::Found{}));
}

TEST(FindText, OffersToLookAgainWhileAReviewGoesOn)
{
    const ScreenText text = findText(phase::Found{}, QuestAvailability(QuestAvailability::InReview{}));
    EXPECT_EQ(text.retry, "Look again");
    EXPECT_EQ(text.primary, "Upload chat");
    EXPECT_EQ(findText(phase::Loading{}, QuestAvailability(QuestAvailability::InReview{})).retry, "");
}

TEST(ToneText, SaysWhatTheSymbolShows)
{
    EXPECT_STREQ(toneText(Tone::waiting), "In progress");
    EXPECT_STREQ(toneText(Tone::good), "OK");
    EXPECT_STREQ(toneText(Tone::warning), "Attention");
    EXPECT_STREQ(toneText(Tone::bad), "Error");
}

TEST(UploadText, FollowsThePhase)
{
    const StatusText packing{Tone::waiting, "Packing your chat…"};
    EXPECT_EQ(uploadText(phase::Idle{}).status, packing);
    EXPECT_EQ(uploadText(phase::Preparing{}).status, packing);
    EXPECT_EQ(uploadText(phase::Uploading{0.5}).status,
              (StatusText{Tone::good, "Uploading securely. Keep this window open."}));
    EXPECT_EQ(uploadText(phase::Finishing{}).status, (StatusText{Tone::waiting, "Finishing up…"}));
    EXPECT_EQ(uploadText(phase::Finishing{}).retry, "");
    EXPECT_EQ(uploadText(phase::Failed{"No."}).status, (StatusText{Tone::bad, "No."}));
    EXPECT_EQ(uploadText(phase::Failed{"No."}).retry, "Try again");
}

TEST(UploadBar, FollowsThePhase)
{
    const UploadBar packing{.value = 0, .isMeasured = false, .isBusy = true};
    EXPECT_EQ(uploadBar(phase::Idle{}), packing);
    EXPECT_EQ(uploadBar(phase::Preparing{}), packing);
    EXPECT_EQ(uploadBar(phase::Uploading{0.5}), (UploadBar{.value = 0.5, .isMeasured = true}));
    EXPECT_EQ(uploadBar(phase::Finishing{}), (UploadBar{.value = 1, .isMeasured = true}));
    EXPECT_EQ(uploadBar(phase::Failed{"No."}), UploadBar{});
    EXPECT_TRUE(uploadBar(phase::Uploading{0}).isMoving());
    EXPECT_FALSE(uploadBar(phase::Finishing{}).isMoving());
    EXPECT_FALSE(uploadBar(phase::Preparing{}).isMoving());
}

TEST(UploadText, SaysHowTheRewardStands)
{
    const RewardStatus packing{RewardStanding::packing, "Packing"};
    EXPECT_EQ(rewardStatus(UploadPhase(phase::Idle{})), packing);
    EXPECT_EQ(rewardStatus(UploadPhase(phase::Preparing{})), packing);
    EXPECT_EQ(rewardStatus(UploadPhase(phase::Uploading{0.5})), (RewardStatus{RewardStanding::sending, "Uploading"}));
    EXPECT_EQ(rewardStatus(UploadPhase(phase::Finishing{})), (RewardStatus{RewardStanding::sending, "Finishing"}));
    EXPECT_EQ(rewardStatus(UploadPhase(phase::Failed{"No."})), (RewardStatus{RewardStanding::notSent, "Not sent"}));
}

TEST(UploadAmounts, SayHowMuchAndHowLongOnceItIsKnown)
{
    using namespace std::chrono_literals;
    const UploadProgress progress{3'400'000, 8'100'000};
    EXPECT_EQ(uploadAmounts(uploadBar(phase::Uploading{0.42}), progress, 2min), "3.4 of 8.1 MB, about 2 minutes left");
    EXPECT_EQ(uploadAmounts(uploadBar(phase::Uploading{0.42}), progress, std::nullopt), "3.4 of 8.1 MB");
    EXPECT_EQ(uploadAmounts(uploadBar(phase::Uploading{0}), {0, 999}, std::nullopt), "0 of 999 bytes");
    EXPECT_EQ(uploadAmounts(uploadBar(phase::Finishing{}), {8'100'000, 8'100'000}, 1s), "8.1 of 8.1 MB");
    EXPECT_EQ(uploadAmounts(uploadBar(phase::Uploading{0}), {}, std::nullopt), "") << "no report has come";
    EXPECT_EQ(uploadAmounts(uploadBar(phase::Preparing{}), progress, 1s), "") << "an earlier upload's";
    EXPECT_EQ(uploadAmounts(uploadBar(phase::Failed{"No."}), progress, 1s), "");
}

TEST(PercentText, IsWholeAndRoundedDown)
{
    EXPECT_EQ(percentLabel(0.429), "42 %");
    EXPECT_EQ(percentText(0), "0 percent");
    EXPECT_EQ(percentText(0.42), "42 percent");
    EXPECT_EQ(percentText(0.429), "42 percent");
    EXPECT_EQ(percentText(0.29), "29 percent");
    EXPECT_EQ(percentText(0.57), "57 percent");
    EXPECT_EQ(percentText(0.999), "99 percent");
    EXPECT_EQ(percentText(1 - 1e-12), "99 percent");
    EXPECT_EQ(percentText(1), "100 percent");
}

TEST(AccountText, NamesWhoIsSignedIn)
{
    EXPECT_EQ(signedInText("Ada"), "Signed in as Ada");
    EXPECT_EQ(linkedText("Ada"), "Linked to Ada.");
    EXPECT_EQ(stepText(2, 6), "Step 2 of 6");
}

} // namespace
} // namespace vorn
