#include "tests/VornMacCore/Client/UploadFixture.h"
#include "tests/support/log/CapturedLog.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace vorn {
namespace {

using namespace testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string newPair = R"({"token":"canary-token-2","refreshToken":"canary-refresh-2"})";

std::vector<std::string> bearers(const UploadFixture& fix)
{
    std::vector<std::string> found;
    for (const auto& request : fix.server.requests()) found.push_back(request.header("Authorization").value_or("none"));
    return found;
}

TEST(UploadSession, RenewedInTheMiddleGoesOn)
{
    UploadFixture fix("ab", 1);
    fix.opens(fix.urlsOf(1, 1));
    fix.takesPart();
    fix.server.answer({.status = 401});
    fix.server.answer(Answer::json(200, newPair));
    fix.givesURLs(2, fix.urlsOf(2, 2));
    fix.takesPart();
    fix.completes();
    EXPECT_EQ(fix.upload().id, "s1");
    EXPECT_THAT(fix.requests(),
                ElementsAre(opening, putting(1), askingForURLs, refreshing, askingForURLs, putting(2), completing));
    EXPECT_THAT(bearers(fix), ElementsAre("Bearer canary-token", "none", "Bearer canary-token", "none",
                                          "Bearer canary-token-2", "none", "Bearer canary-token-2"));
    EXPECT_EQ(fix.bodyOf(2), fix.bodyOf(4));
}

TEST(UploadSession, RenewedForTheAbortSendsItAgain)
{
    const CapturedLog log;
    UploadFixture fix;
    fix.opens(fix.urlsOf(1, 1));
    fix.answersPart(500);
    fix.server.answer({.status = 401});
    fix.server.answer(Answer::json(200, newPair));
    fix.aborts();
    fix.uploadFails<UploadError>();
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting, refreshing, aborting));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(UploadSession, RenewedForTheAbortOfACancelledUploadSendsItAgain)
{
    UploadFixture fix;
    fix.opens(fix.urlsOf(1, 1));
    fix.server.script(fix.cancels());
    fix.server.answer({.status = 401});
    fix.server.answer(Answer::json(200, newPair));
    fix.aborts();
    EXPECT_THROW(fix.upload(), Cancelled);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting, refreshing, aborting));
}

TEST(UploadSession, IsNotRenewedForTheStorage)
{
    UploadFixture fix;
    fix.opens(fix.urlsOf(1, 1));
    fix.answersPart(401);
    fix.aborts();
    EXPECT_STREQ(fix.uploadFails<UploadError>().what(), "part 1 refused with 401");
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
    EXPECT_TRUE(fix.store->load());
}

TEST(UploadSession, EndedInTheMiddleEndsTheUploadAndLeavesNoOneToAbort)
{
    const CapturedLog log;
    UploadFixture fix;
    fix.opens({});
    fix.server.answer({.status = 401});
    fix.server.answer({.status = 401});
    EXPECT_EQ(fix.uploadFails<APIError>(), APIError(APIError::SessionExpired{}));
    EXPECT_THAT(fix.requests(), ElementsAre(opening, askingForURLs, refreshing));
    EXPECT_FALSE(fix.store->load());
    EXPECT_THAT(log.lines(), ElementsAre("[upload] abort after a failed upload failed: no session"));
}

/// An upload for one user, whose session `change` removes or replaces while the part is being sent.
struct PinnedUpload : UploadFixture {
    explicit PinnedUpload(const std::function<void(UploadFixture&)>& change)
    {
        api = api->pinned("user-1");
        opens(urlsOf(1, 1));
        server.script([this, change](Exchange& exchange) {
            exchange.readWholeBody();
            change(*this);
            exchange.answer({.headers = {{"ETag", "\"tag\""}}});
        });
    }
};

const std::string stopped = "[upload] abort after a failed upload failed: session of another user";

TEST(UploadSession, SignedOutInTheMiddleSendsNothingMore)
{
    const CapturedLog log;
    PinnedUpload fix([](UploadFixture& upload) { upload.store->clear(); });
    EXPECT_EQ(fix.uploadFails<APIError>(), APIError(APIError::SessionChanged{}));
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1)));
    EXPECT_THAT(log.lines(), ElementsAre(stopped));
}

TEST(UploadSession, TakenOverByAnotherUserSendsNothingMore)
{
    const CapturedLog log;
    PinnedUpload fix(
        [](UploadFixture& upload) { upload.store->save({"canary-other", "canary-other-refresh", "user-2", "Grace"}); });
    EXPECT_EQ(fix.uploadFails<APIError>(), APIError(APIError::SessionChanged{}));
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1)));
    EXPECT_THAT(log.lines(), ElementsAre(stopped));
}

TEST(UploadSession, SignedOutAndCancelledSendsNoAbort)
{
    UploadFixture fix;
    fix.api = fix.api->pinned("user-1");
    fix.opens(fix.urlsOf(1, 1));
    const auto cancels = fix.cancels();
    fix.server.script([&fix, cancels](Exchange& exchange) {
        fix.store->clear();
        cancels(exchange);
    });
    EXPECT_THROW(fix.upload(), Cancelled);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1)));
}

TEST(UploadSession, MissingFromTheStartSendsNothing)
{
    const CapturedLog log;
    UploadFixture fix;
    fix.store->clear();
    EXPECT_EQ(fix.uploadFails<APIError>(), APIError(APIError::NotSignedIn{}));
    EXPECT_THAT(fix.requests(), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
}

} // namespace
} // namespace vorn
