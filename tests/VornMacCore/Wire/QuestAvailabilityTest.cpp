#include "VornMacCore/Wire/QuestAvailability.h"

#include "VornMacCore/Wire/RejectionCopy.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono;
using Q = QuestAvailability;

constexpr Instant now = sys_days(2026y / March / 1) + 9h + 15min;

QuestWire quest(const std::string& status, const std::optional<std::string>& availableAt = std::nullopt,
                const std::optional<std::string>& reason = std::nullopt)
{
    QuestWire quest;
    quest.id = "q-1";
    quest.status = status;
    quest.availableAt = availableAt;
    quest.rejectionReasonKey = reason;
    return quest;
}

TEST(QuestAvailability, CoolsDownAfterAnApproval)
{
    EXPECT_EQ(Q(quest("approved", "2026-03-01T09:15:01Z"), now), Q(Q::Cooldown{now + 1s}));
    EXPECT_EQ(Q(quest("approved", "2026-03-01T09:15:00.001Z"), now), Q(Q::Cooldown{now + 1ms}));
    EXPECT_EQ(Q(quest("approved", "2026-03-02T00:00:00+01:00"), now), Q(Q::Cooldown{now + 13h + 45min}));
}

TEST(QuestAvailability, IsAvailableOnceTheTimeHasCome)
{
    for (const char* time :
         {"2026-03-01T09:15:00Z", "2026-03-01T10:15:00+01:00", "2026-03-01T09:14:59.999Z", "1970-01-01T00:00:00Z"}) {
        EXPECT_EQ(Q(quest("approved", time), now), Q(Q::Available{})) << time;
    }
}

TEST(QuestAvailability, IsAvailableWhenAnApprovalNamesNoTimeThatCanBeRead)
{
    EXPECT_EQ(Q(quest("approved"), now), Q(Q::Available{}));
    for (const char* time : {"", "2099-01-01", "2099-01-01 00:00:00", "tomorrow", "4070908800"}) {
        EXPECT_EQ(Q(quest("approved", time), now), Q(Q::Available{})) << time;
    }
}

TEST(QuestAvailability, LooksAtTheTimeOfAnApprovalOnly)
{
    EXPECT_EQ(Q(quest("submitted", "2099-01-01T00:00:00Z"), now), Q(Q::InReview{}));
    EXPECT_EQ(Q(quest("rejected", "2099-01-01T00:00:00Z", "wrong_provider"), now),
              Q(Q::LastRejected{"wrong_provider"}));
    EXPECT_EQ(Q(quest("open", "2099-01-01T00:00:00Z"), now), Q(Q::Available{}));
}

TEST(QuestAvailability, PassesTheReasonOfARejectionOn)
{
    EXPECT_EQ(Q(quest("rejected", std::nullopt, "no such reason"), now), Q(Q::LastRejected{"no such reason"}));
    const Q without(quest("rejected"), now);
    ASSERT_EQ(without, Q(Q::LastRejected{std::nullopt}));
    EXPECT_EQ(RejectionCopy::text(std::get<Q::LastRejected>(without.state()).reasonKey),
              "This upload wasn't accepted.");
}

TEST(QuestAvailability, IsAvailableForEveryOtherStatus)
{
    for (const char* status : {"", "open", "Submitted", "APPROVED", "rejected ", "review_pending"}) {
        EXPECT_EQ(Q(quest(status, "2099-01-01T00:00:00Z", "wrong_provider"), now), Q(Q::Available{})) << status;
    }
}

TEST(QuestAvailability, LetsUploadUnlessOneWaitsOrCoolsDown)
{
    EXPECT_FALSE(Q(Q::Cooldown{now}).canUpload());
    EXPECT_TRUE(Q(Q::LastRejected{std::nullopt}).canUpload());
    EXPECT_TRUE(Q(Q::Available{}).canUpload());
    EXPECT_FALSE(Q(Q::InReview{}).canUpload());
}

TEST(QuestAvailability, IsComparedByCaseAndPayload)
{
    EXPECT_EQ(Q(Q::Cooldown{now}), Q(Q::Cooldown{now}));
    EXPECT_NE(Q(Q::Cooldown{now}), Q(Q::Cooldown{now + 1ms}));
    EXPECT_NE(Q(Q::LastRejected{"a"}), Q(Q::LastRejected{"b"}));
    EXPECT_NE(Q(Q::LastRejected{""}), Q(Q::LastRejected{std::nullopt}));
    EXPECT_NE(Q(Q::Available{}), Q(Q::InReview{}));
    EXPECT_TRUE(Q(Q::InReview{}).is<Q::InReview>());
    EXPECT_FALSE(Q(Q::InReview{}).is<Q::Available>());
}

} // namespace
} // namespace vorn
