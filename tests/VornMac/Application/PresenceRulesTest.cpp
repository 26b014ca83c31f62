#include "VornMac/Application/PresenceRules.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

std::optional<SubmissionStatus> submission(const std::string& status, const std::string& id = "sub-1")
{
    SubmissionStatus made;
    made.id = id;
    made.status = status;
    return made;
}

TEST(PresenceRules, FollowTheUpload)
{
    struct Case {
        const char* name;
        UploadPhase phase;
        std::optional<int> percent;
    };
    for (const auto& [name, phase, percent] : {
             Case{"idle", phase::Idle{}, std::nullopt},
             Case{"preparing", phase::Preparing{}, 0},
             Case{"begun", phase::Uploading{0}, 0},
             Case{"under way", phase::Uploading{0.429}, 42},
             Case{"nearly over", phase::Uploading{0.9999}, 99},
             Case{"sent", phase::Uploading{1}, 100},
             Case{"finishing", phase::Finishing{}, 100},
             Case{"failed", phase::Failed{"no"}, std::nullopt},
         }) {
        SCOPED_TRACE(name);
        EXPECT_EQ(presence::percentOnIcon(phase), percent);
        EXPECT_EQ(presence::staysAwake(phase), percent.has_value());
    }
}

TEST(PresenceRules, KnowAnAcceptedUploadAndTheEndOfItsReview)
{
    struct Case {
        const char* name;
        std::optional<SubmissionStatus> before, now;
        bool isNewSubmission, isReviewed;
    };
    for (const auto& [name, before, now, isNewSubmission, isReviewed] : {
             Case{"nothing", std::nullopt, std::nullopt, false, false},
             Case{"accepted", std::nullopt, submission("analyzing"), true, false},
             Case{"accepted and reviewed", std::nullopt, submission("approved"), true, true},
             Case{"a person checks", submission("analyzing"), submission("review_pending"), false, false},
             Case{"approved", submission("review_pending"), submission("approved"), false, true},
             Case{"rejected", submission("analyzing"), submission("rejected"), false, true},
             Case{"expired", submission("analyzing"), submission("expired"), false, true},
             Case{"told again", submission("approved"), submission("approved"), false, false},
             Case{"the next one", submission("rejected"), submission("analyzing", "sub-2"), true, false},
             Case{"the next one's end", submission("rejected"), submission("rejected", "sub-2"), true, true},
             Case{"signed out", submission("analyzing"), std::nullopt, false, false},
         }) {
        SCOPED_TRACE(name);
        EXPECT_EQ(presence::isNewSubmission(before, now), isNewSubmission);
        EXPECT_EQ(presence::isReviewed(before, now), isReviewed);
    }
}

TEST(PresenceRules, TellWhoLooksElsewhere)
{
    struct Case {
        const char* status;
        bool isActive, reducesMotion;
        presence::Alert alert;
    };
    for (const auto& [status, isActive, reducesMotion, alert] : {
             Case{"approved", false, false, {.notifies = true, .sounds = true}},
             Case{"approved", false, true, {.notifies = true, .sounds = true}},
             Case{"approved", true, false, {.notifies = false, .sounds = true}},
             Case{"approved", true, true, {.notifies = false, .sounds = false}},
             Case{"rejected", false, false, {.notifies = true, .sounds = false}},
             Case{"rejected", true, false, {.notifies = false, .sounds = false}},
             Case{"expired", false, false, {.notifies = true, .sounds = false}},
             Case{"expired", true, false, {.notifies = false, .sounds = false}},
         }) {
        SCOPED_TRACE(std::string(status) + (isActive ? ", active" : "") + (reducesMotion ? ", still" : ""));
        EXPECT_EQ(presence::alertFor(submission(status)->status,
                                     {.isWindowActive = isActive, .reducesMotion = reducesMotion}),
                  alert);
    }
}

} // namespace
} // namespace vorn
