#include "tests/VornSandbox/Service/SandboxFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using sandbox::ReviewPlan;
using sandbox::ServiceOptions;
using ::testing::ElementsAre;

const std::string archive = std::string(1000, 'a') + std::string(1000, 'b') + "c";

Reply create(const SandboxFixture& fix, const std::string& token, std::int64_t size, std::int64_t parts)
{
    return fix.api("POST", "desktop/nimbrel/submissions",
                   json{{"termsVersion", "vorn-mac-nimbrel-1"}, {"sizeBytes", size}, {"partCount", parts}}, token);
}

Reply abort(const SandboxFixture& fix, const std::string& token, const std::string& id)
{
    return fix.api("POST", "desktop/nimbrel/submissions/" + id + "/abort", {}, token);
}

TEST(Submissions, AnswerAsTheTableOfRecordsSays)
{
    const SandboxFixture fix(smallParts());
    const Reply reply = create(fix, fix.link().token, 2001, 3);
    EXPECT_EQ(reply.status, 201);
    EXPECT_TRUE(reply.body["submissionId"].is_string());
    EXPECT_EQ(reply.body["questId"], "quest_nimbrel");
    EXPECT_EQ(reply.body["attempt"], 1);
    EXPECT_EQ(reply.body["expiresInSeconds"], 900);
    const json& asset = reply.body["assets"].at(0);
    EXPECT_EQ(asset["position"], 0);
    EXPECT_TRUE(asset["uploadId"].is_string());
    ASSERT_EQ(asset["parts"].size(), 3U);
    EXPECT_EQ(asset["parts"][2]["partNumber"], 3);
}

TEST(Submissions, RefuseAPlanThatDoesNotFit)
{
    ServiceOptions options = smallParts();
    options.settings.maxBytes = 5000;
    const SandboxFixture fix(options);
    const std::string token = fix.link().token;
    const struct {
        const char* name;
        std::int64_t size;
        std::int64_t parts;
        int status;
    } cases[]{
        {"empty", 0, 1, 201},
        {"one part", 1000, 1, 201},
        {"a byte more", 1001, 2, 201},
        {"the limit", 5000, 5, 201},
        {"too large", 5001, 6, 413},
        {"a part too few", 1001, 1, 422},
        {"a part too many", 1000, 2, 422},
        {"no part", 0, 0, 422},
        {"negative", -1, 1, 422},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        EXPECT_EQ(create(fix, token, test.size, test.parts).status, test.status);
    }
}

TEST(Submissions, RefuseUnknownTermsAndBrokenSignals)
{
    const SandboxFixture fix;
    const std::string token = fix.link().token;
    const json good{{"termsVersion", "vorn-mac-nimbrel-1"}, {"sizeBytes", 1}, {"partCount", 1}};
    const struct {
        const char* name;
        const char* key;
        json value;
        int status;
    } cases[]{
        {"signals", "device", {{"timezone", "Europe/Berlin"}, {"locale", "de-DE"}}, 201},
        {"other terms", "termsVersion", "vorn-mac-nimbrel-2", 422},
        {"a fraction", "sizeBytes", 1.5, 400},
        {"a flag", "partCount", true, 400},
        {"more than 64 bits", "sizeBytes", 18'446'744'073'709'551'615U, 400},
        {"signals without locale", "device", {{"timezone", "Europe/Berlin"}}, 400},
        {"signals as a text", "device", "here", 400},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        json body = good;
        body[test.key] = test.value;
        EXPECT_EQ(fix.api("POST", "desktop/nimbrel/submissions", body, token).status, test.status);
    }
}

TEST(Submissions, AreReviewedStepByStep)
{
    ServiceOptions options = smallParts();
    options.settings.reviewStep = 10s;
    SandboxFixture fix(options);
    const std::string token = fix.link().token;
    const std::string id = fix.submit(token, archive);
    EXPECT_EQ(fix.submission(token, id).body,
              json({{"id", id}, {"questId", "quest_nimbrel"}, {"status", "analyzing"}, {"assetsRemaining", 0}}));
    fix.advance(9999ms);
    EXPECT_EQ(fix.submission(token, id).body["status"], "analyzing");
    fix.advance(1ms);
    EXPECT_EQ(fix.submission(token, id).body["status"], "review_pending");
    fix.advance(10s);
    EXPECT_EQ(fix.submission(token, id).body["status"], "approved");
    EXPECT_EQ(fix.submission(token, id).body["rewardUsd"], "12.50"); // a text here
    EXPECT_EQ(fix.quest(token)["rewardUsd"], 12.5);                  // a number there
}

TEST(Submissions, MoveTheQuest)
{
    ServiceOptions options = smallParts();
    options.settings.cooldown = 30min;
    SandboxFixture fix(options);
    const std::string token = fix.link().token;
    EXPECT_EQ(fix.quest(token)["status"], "available");
    const Upload upload = fix.open(token, archive);
    EXPECT_EQ(fix.quest(token)["status"], "available");
    fix.complete(token, upload, fix.putAll(upload, archive), archive);
    EXPECT_EQ(fix.quest(token)["status"], "submitted");
    EXPECT_EQ(create(fix, token, 1, 1).body["code"], "in_review");
    fix.advance(6s);
    const json quest = fix.quest(token);
    EXPECT_EQ(quest["status"], "approved");
    EXPECT_EQ(quest["availableAt"], "2026-03-01T09:45:06Z");
    EXPECT_EQ(create(fix, token, 1, 1).body["code"], "cooling_down");
    fix.advance(30min);
    EXPECT_EQ(create(fix, token, 1, 1).status, 201);
}

TEST(Submissions, CanBeRejectedForAReason)
{
    ServiceOptions options = smallParts();
    options.settings.review = *ReviewPlan::parse("rejected:export_too_small");
    SandboxFixture fix(options);
    const std::string token = fix.link().token;
    const std::string id = fix.submit(token, archive);
    fix.advance(6s);
    EXPECT_EQ(fix.submission(token, id).body["status"], "rejected");
    EXPECT_EQ(fix.submission(token, id).body["rejectionReasonKey"], "export_too_small");
    EXPECT_FALSE(fix.submission(token, id).body.contains("rewardUsd"));
    EXPECT_EQ(fix.quest(token)["status"], "rejected");
    EXPECT_EQ(fix.quest(token)["rejectionReasonKey"], "export_too_small");
    EXPECT_EQ(fix.open(token, archive).id.substr(0, 4), "sub_"); // at once
}

TEST(Submissions, CanExpireInReview)
{
    ServiceOptions options = smallParts();
    options.settings.review = *ReviewPlan::parse("expired");
    SandboxFixture fix(options);
    const std::string token = fix.link().token;
    const std::string id = fix.submit(token, archive);
    fix.advance(6s);
    EXPECT_EQ(fix.submission(token, id).body["status"], "expired");
    EXPECT_EQ(fix.quest(token)["status"], "available");
}

TEST(Submissions, WaitForTheButtonsWhenReviewIsManual)
{
    ServiceOptions options = smallParts();
    options.settings.review = *ReviewPlan::parse("manual");
    SandboxFixture fix(options);
    const std::string token = fix.link().token;
    const std::string id = fix.submit(token, archive);
    const std::string path = "submissions/" + id + "/outcome";
    fix.advance(50min);
    EXPECT_EQ(fix.submission(token, id).body["status"], "review_pending");
    EXPECT_EQ(fix.phone(path, {{"outcome", "manual"}}).status, 422);
    EXPECT_EQ(fix.phone(path, {{"outcome", "rejected:wrong_provider"}}).status, 200);
    EXPECT_EQ(fix.submission(token, id).body["rejectionReasonKey"], "wrong_provider");
    EXPECT_EQ(fix.phone(path, {{"outcome", "approved"}}).status, 409);
}

TEST(Submissions, RejectWhatIsNoExportWhenReviewIsChecked)
{
    ServiceOptions options = smallParts();
    options.settings.review = *ReviewPlan::parse("checked");
    SandboxFixture fix(options);
    const std::string token = fix.link().token;
    const std::string id = fix.submit(token, archive);
    fix.advance(6s);
    EXPECT_EQ(fix.submission(token, id).body["rejectionReasonKey"], "media_unreadable");
}

TEST(Submissions, AbortFreesTheParts)
{
    ServiceOptions options = smallParts();
    const TemporaryFolder folder;
    options.state = folder.path();
    const SandboxFixture fix(options);
    const std::string token = fix.link().token;
    const Upload upload = fix.open(token, archive);
    const json parts = fix.putAll(upload, archive);
    EXPECT_TRUE(std::filesystem::exists(folder / "uploads" / upload.id / "archive.zip"));
    EXPECT_EQ(abort(fix, token, upload.id).status, 200);
    EXPECT_FALSE(std::filesystem::exists(folder / "uploads" / upload.id));
    EXPECT_EQ(fix.submission(token, upload.id).body["status"], "aborted");
    EXPECT_EQ(abort(fix, token, upload.id).status, 200); // a second abort does no harm
    EXPECT_EQ(fix.put(upload.urls.at(1), archive.substr(0, 1000)).status, 409);
    EXPECT_EQ(fix.complete(token, upload, parts, archive).status, 409);
}

TEST(Submissions, CannotBeAbortedOnceTheyAreInReview)
{
    const SandboxFixture fix(smallParts());
    const std::string token = fix.link().token;
    EXPECT_EQ(abort(fix, token, fix.submit(token, archive)).status, 409);
}

TEST(Submissions, MakeRoomForANewOne)
{
    const SandboxFixture fix(smallParts());
    const std::string token = fix.link().token;
    const Upload first = fix.open(token, archive);
    const Upload second = fix.open(token, archive);
    EXPECT_EQ(fix.submission(token, first.id).body["status"], "aborted");
    EXPECT_EQ(fix.submission(token, second.id).body["status"], "uploading");
    EXPECT_EQ(fix.submission(token, second.id).body["assetsRemaining"], 1);
}

TEST(Submissions, AreForTheirOwnAccountOnly)
{
    ServiceOptions options = smallParts();
    options.settings.users = {"Sam", "Robin"};
    const SandboxFixture fix(options);
    const std::string mine = fix.link("usr_1").token;
    const std::string theirs = fix.link("usr_2").token;
    const Upload upload = fix.open(mine, archive);
    EXPECT_EQ(fix.submission(theirs, upload.id).status, 404);
    EXPECT_EQ(abort(fix, theirs, upload.id).status, 404);
    EXPECT_EQ(fix.complete(theirs, upload, json::array(), archive).status, 404);
    EXPECT_EQ(fix.submission(mine, "sub_0").status, 404);
}

} // namespace
} // namespace vorn::testing
