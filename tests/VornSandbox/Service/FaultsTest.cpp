#include "tests/VornSandbox/Service/RawClient.h"
#include "tests/VornSandbox/Service/SandboxFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <httplib.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace vorn::testing {
namespace {

using nlohmann::json;
using sandbox::Fault;
using sandbox::FaultPlan;
using sandbox::ServiceOptions;
using ::testing::Contains;
using ::testing::HasSubstr;

ServiceOptions with(const std::vector<std::string>& faults)
{
    ServiceOptions options = smallParts();
    for (const std::string& fault : faults) options.faults.push_back(Fault::parse(fault).value());
    return options;
}

TEST(Fault, IsReadFromItsText)
{
    const Fault fault = Fault::parse("put-part=503x2@3").value();
    EXPECT_EQ(fault.operation, "put-part");
    EXPECT_EQ(fault.effect, Fault::Effect::status);
    EXPECT_EQ(fault.status, 503);
    EXPECT_EQ(fault.times, 2);
    EXPECT_EQ(fault.from, 3);
    EXPECT_EQ(Fault::parse("quest=drop")->effect, Fault::Effect::drop);
    EXPECT_EQ(Fault::parse("quest=hangx1")->effect, Fault::Effect::hang);
    EXPECT_EQ(Fault::parse("quest=garbage@2")->effect, Fault::Effect::garbage);
    EXPECT_EQ(Fault::parse("quest=slow")->effect, Fault::Effect::slow);
    EXPECT_EQ(Fault::parse("create-submission=no-assetx1")->effect, Fault::Effect::noAsset);
    EXPECT_EQ(Fault::parse("part-urls=bad-url@2")->effect, Fault::Effect::badURL);
    EXPECT_EQ(Fault::parse("quest=truncate")->effect, Fault::Effect::truncate);
}

TEST(Fault, IsNothingWhenItMakesNoSense)
{
    for (const char* text :
         {"", "quest", "quest=", "other=500", "quest=99", "quest=600", "quest=500x", "quest=500x0", "quest=500@0",
          "quest=500@", "quest=500x99999999999999999999", "quest=broken", "quest=500x1x2", "=500", "quest=-500",
          "quest=no-asset", "part-urls=no-asset", "quest=bad-url"}) {
        EXPECT_FALSE(Fault::parse(text)) << text;
    }
}

TEST(FaultPlan, CountsRequestsOfEachOperation)
{
    FaultPlan plan({Fault::parse("quest=500x2@2").value()});
    std::vector<bool> met;
    for (int i = 0; i < 5; ++i) {
        EXPECT_FALSE(plan.next("logout"));
        met.push_back(plan.next("quest").has_value());
    }
    EXPECT_THAT(met, ::testing::ElementsAre(false, true, true, false, false));
}

TEST(Faults, AnswerWithTheirStatusAsOftenAsTold)
{
    const SandboxFixture fix(with({"quest=503x1"}));
    const std::string token = fix.link().token;
    const Reply first = fix.api("GET", "desktop/nimbrel", {}, token);
    EXPECT_EQ(first.status, 503);
    EXPECT_EQ(first.body["code"], "fault");
    EXPECT_EQ(fix.api("GET", "desktop/nimbrel", {}, token).status, 200);
}

TEST(Faults, KnowEveryOperation)
{
    std::vector<std::string> faults;
    for (const std::string_view operation : sandbox::operations) {
        if (operation != "create-link" && operation != "poll-link") faults.push_back(std::string(operation) + "=418");
    }
    const SandboxFixture fix(with(faults));
    const std::string token = fix.link().token;
    const std::string submissions = "desktop/nimbrel/submissions";
    const std::string asset = submissions + "/sub_1/assets/ast_1/";
    EXPECT_EQ(fix.api("POST", "auth/desktop/refresh", json::object()).status, 418);
    EXPECT_EQ(fix.api("POST", "auth/desktop/logout", {}, token).status, 418);
    EXPECT_EQ(fix.api("GET", "desktop/nimbrel", {}, token).status, 418);
    EXPECT_EQ(fix.api("POST", submissions, json::object(), token).status, 418);
    EXPECT_EQ(fix.api("POST", asset + "part-urls", json::object(), token).status, 418);
    EXPECT_EQ(fix.api("POST", asset + "complete", json::object(), token).status, 418);
    EXPECT_EQ(fix.api("POST", submissions + "/sub_1/abort", {}, token).status, 418);
    EXPECT_EQ(fix.api("GET", submissions + "/sub_1", {}, token).status, 418);
    EXPECT_EQ(fix.send("PUT", "/uploads/ast_1/1", {}, "part").status, 418);
    const SandboxFixture linking(with({"create-link=418@2", "poll-link=418"}));
    const json link = linking.createLink();
    EXPECT_EQ(linking.poll(link).status, 418);
    EXPECT_THROW(linking.createLink(), std::runtime_error);
}

TEST(Faults, RefuseAPartAfterItsBodyWasRead)
{
    const SandboxFixture fix(with({"put-part=403x1"}));
    const std::string token = fix.link().token;
    const std::string archive(1000, 'a');
    const Upload upload = fix.open(token, archive);
    EXPECT_EQ(fix.put(upload.urls.at(1), archive).status, 403);
    EXPECT_THAT(fix.log(), Contains(HasSubstr("403 1000>")));
    EXPECT_EQ(fix.put(upload.urls.at(1), archive).status, 200);
}

TEST(Faults, DropTheConnectionWithoutAnAnswer)
{
    const SandboxFixture fix(with({"quest=dropx1", "put-part=dropx1"}));
    const std::string token = fix.link().token;
    EXPECT_EQ(fix.api("GET", "desktop/nimbrel", {}, token).status, 0);
    EXPECT_EQ(fix.api("GET", "desktop/nimbrel", {}, token).status, 200);
    EXPECT_EQ(fix.send("PUT", "/uploads/ast_1/1", {}, std::string(1000, 'a')).status, 0);
    EXPECT_THAT(fix.log(), Contains(HasSubstr("GET /api/v1/desktop/nimbrel dropped")));
}

TEST(Faults, AnswerWithSomethingThatIsNoJSON)
{
    const SandboxFixture fix(with({"quest=garbage"}));
    const Reply reply = fix.api("GET", "desktop/nimbrel", {}, fix.link().token);
    EXPECT_EQ(reply.status, 200);
    EXPECT_TRUE(reply.body.is_discarded());
}

TEST(Faults, AnswerLateWhenSlow)
{
    const SandboxFixture fix(with({"quest=slowx1"}));
    const std::string token = fix.link().token;
    httplib::Client impatient("127.0.0.1", fix.port());
    impatient.set_read_timeout(0, 100'000);
    const httplib::Headers headers{{"Accept", "application/json"}, {"Authorization", "Bearer " + token}};
    EXPECT_FALSE(impatient.Get("/api/v1/desktop/nimbrel", headers));
}

TEST(Faults, LeaveARequestHangingUntilTheServiceEnds)
{
    SandboxFixture fix(with({"quest=hang"}));
    const std::string token = fix.link().token;
    std::atomic<int> status = -1;
    std::thread client([&] { status = fix.api("GET", "desktop/nimbrel", {}, token).status; });
    while (std::ranges::none_of(fix.log(), [](const auto& line) { return line.find("left hanging") != line.npos; })) {
        std::this_thread::yield();
    }
    EXPECT_EQ(status.load(), -1);
    EXPECT_EQ(fix.createLink().size(), 5U); // others are served meanwhile
    fix.stop();
    client.join();
    EXPECT_EQ(status.load(), 0);
}

TEST(Faults, ForgetARequestWhoseClientHasLeft)
{
    const SandboxFixture fix(with({"quest=hang"}));
    for (int i = 0; i < 30; ++i) {
        const RawClient mac(fix.port());
        mac.send(rawRequest(fix.port(), "GET /api/v1/desktop/nimbrel"));
        mac.finishSending();
        EXPECT_EQ(mac.readToEnd(), "");
    }
    EXPECT_EQ(fix.createLink().size(), 5U);
}

TEST(Faults, AnswerWithoutABodyWhereAStatusHasNone)
{
    for (const std::string status : {"204", "304"}) {
        SCOPED_TRACE(status);
        const SandboxFixture fix(with({"quest=" + status}));
        const Reply reply = fix.api("GET", "desktop/nimbrel", {}, fix.link().token);
        EXPECT_EQ(reply.status, std::stoi(status));
        EXPECT_EQ(reply.text, "");
        EXPECT_FALSE(reply.headers.contains("content-type"));
    }
}

TEST(Faults, OpenASubmissionWithoutItsAsset)
{
    const SandboxFixture fix(with({"create-submission=no-assetx1"}));
    const std::string token = fix.link().token;
    const json request{{"termsVersion", "vorn-mac-nimbrel-1"}, {"sizeBytes", 10}, {"partCount", 1}};
    const Reply first = fix.api("POST", "desktop/nimbrel/submissions", request, token);
    EXPECT_EQ(first.status, 201);
    EXPECT_EQ(first.body["assets"], json::array());
    const std::string id = first.body["submissionId"];
    EXPECT_EQ(fix.api("POST", "desktop/nimbrel/submissions/" + id + "/abort", {}, token).status, 200);
    EXPECT_EQ(fix.open(token, "archive").urls.size(), 1U);
}

TEST(Faults, HandOutAURLThatLeadsToAFile)
{
    const SandboxFixture fix(with({"create-submission=bad-urlx1", "part-urls=bad-urlx1"}));
    const std::string token = fix.link().token;
    const Upload upload = fix.open(token, std::string(1500, 'a'));
    EXPECT_TRUE(upload.urls.at(1).starts_with("file:")) << upload.urls.at(1);
    EXPECT_TRUE(upload.urls.at(2).starts_with(fix.baseURL())) << upload.urls.at(2);
    const std::string path = "desktop/nimbrel/submissions/" + upload.id + "/assets/" + upload.assetId + "/part-urls";
    const Reply more = fix.api("POST", path, json{{"fromPart", 2}, {"count", 1}}, token);
    EXPECT_TRUE(more.body["parts"][0]["url"].get<std::string>().starts_with("file:")) << more.text;
}

TEST(Faults, AnnounceMoreThanTheySend)
{
    const SandboxFixture fix(with({"poll-link=truncate", "put-part=truncate"}));
    const json link = fix.createLink();
    const std::string body = json{{"linkId", link["linkId"]}, {"pollSecret", link["pollSecret"]}}.dump();
    const RawClient mac(fix.port());
    mac.send(rawRequest(fix.port(), "POST /api/v1/auth/device-links/poll",
                        "Accept: application/json\r\nContent-Type: application/json\r\nContent-Length: " +
                            std::to_string(body.size()) + "\r\n") +
             body);
    const std::string sent = R"({"status":"pending"})";
    const std::string answer = mac.readToEnd();
    EXPECT_THAT(answer, HasSubstr("Content-Length: " + std::to_string(sent.size() + 100)));
    EXPECT_THAT(answer, ::testing::EndsWith("\r\n\r\n" + sent));
    EXPECT_THAT(fix.log(), Contains(HasSubstr("/poll 200 cut short")));
}

} // namespace
} // namespace vorn::testing
