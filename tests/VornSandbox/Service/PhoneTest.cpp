#include "tests/VornSandbox/Service/RawClient.h"
#include "tests/VornSandbox/Service/SandboxFixture.h"
#include "tests/VornSandbox/Service/TestArchive.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <httplib.h>

#include <functional>
#include <memory>

namespace vorn::testing {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

Reply messages(const SandboxFixture& fix, const std::string& id, const std::string& page)
{
    return fix.send("GET", "/phone/submissions/" + id + "/messages?page=" + page, {});
}

/// The views sent to a page, until `enough` returns true.
std::vector<json> watch(const SandboxFixture& fix, const std::function<bool(const json& view)>& enough)
{
    std::vector<json> views;
    std::string pending;
    httplib::Client client("127.0.0.1", fix.port());
    client.set_read_timeout(20);
    client.Get("/phone/events", [&](const char* data, std::size_t size) {
        pending.append(data, size);
        for (auto end = pending.find("\n\n"); end != std::string::npos; end = pending.find("\n\n")) {
            const std::string event = pending.substr(0, end);
            pending.erase(0, end + 2);
            if (!event.starts_with("data: ")) continue;
            views.push_back(json::parse(event.substr(6)));
            if (enough(views.back())) return false;
        }
        return true;
    });
    return views;
}

TEST(Phone, ServesItsPageWithNothingFromElsewhere)
{
    const SandboxFixture fix;
    for (const char* path : {"/", "/phone/phone.css", "/phone/phone.js"}) {
        SCOPED_TRACE(path);
        const Reply reply = fix.send("GET", path, {});
        EXPECT_EQ(reply.status, 200);
        EXPECT_THAT(reply.headers.at("content-security-policy"), HasSubstr("default-src 'none'"));
        EXPECT_EQ(reply.text.find("http://"), std::string::npos);
        EXPECT_EQ(reply.text.find("https://"), std::string::npos);
        EXPECT_EQ(reply.text.find("innerHTML"), std::string::npos);
    }
}

TEST(Phone, IsToldEveryChange)
{
    const SandboxFixture fix;
    json link;
    const auto views = watch(fix, [&](const json& view) {
        if (view["links"].empty()) {
            link = fix.createLink(); // only now: the first view came before
            return false;
        }
        if (view["links"][0]["status"] == "pending") {
            fix.phone("links/scan", {{"qrPayload", link["qrPayload"]}});
            return false;
        }
        return true;
    });
    ASSERT_EQ(views.size(), 3U);
    EXPECT_EQ(views[1]["links"][0]["deviceName"], "Test Mac");
    EXPECT_EQ(views[2]["links"][0]["status"], "scanned");
    EXPECT_EQ(views[2].dump().find(link["pollSecret"].get<std::string>()), std::string::npos);
}

TEST(Phone, SeesPartsArriveAndTheReviewEnd)
{
    const SandboxFixture fix(smallParts());
    const std::string token = fix.link().token;
    const std::string archive(1500, 'a');
    const Upload upload = fix.open(token, archive);
    fix.put(upload.urls.at(2), archive.substr(1000));
    json view = watch(fix, [](const json&) { return true; }).back()["submissions"][0];
    EXPECT_EQ(view["status"], "uploading");
    EXPECT_EQ(view["partCount"], 2);
    EXPECT_EQ(view["receivedParts"], json::array({2}));
    EXPECT_EQ(view["hasArchive"], false);
    fix.complete(token, upload, fix.putAll(upload, archive), archive);
    view = watch(fix, [](const json&) { return true; }).back()["submissions"][0];
    EXPECT_EQ(view["inReview"], true);
    EXPECT_EQ(view["hasArchive"], true);
}

TEST(Phone, LeavesRoomForRequestsHoweverManyPagesWatch)
{
    const SandboxFixture fix;
    std::vector<std::unique_ptr<RawClient>> pages;
    int watching = 0;
    for (int i = 0; i < 30; ++i) {
        pages.push_back(std::make_unique<RawClient>(fix.port()));
        pages.back()->send(rawRequest(fix.port(), "GET /phone/events"));
        if (pages.back()->readTo("\r\n\r\n").starts_with("HTTP/1.1 200 ")) ++watching;
    }
    EXPECT_EQ(watching, 30);
    EXPECT_EQ(fix.createLink().size(), 5U);
}

TEST(Phone, PagesThroughMessages)
{
    const SandboxFixture fix;
    const std::string token = fix.link().token;
    const std::string id = fix.submit(token, archiveOf(testMessages(120)));
    const json first = messages(fix, id, "0").body;
    EXPECT_EQ(first["count"], 120);
    EXPECT_EQ(first["perPage"], 50);
    EXPECT_EQ(first["manifest"]["messageCount"], 120);
    ASSERT_EQ(first["messages"].size(), 50U);
    EXPECT_EQ(first["messages"][49]["guid"], "G-49");
    const json last = messages(fix, id, "2").body;
    ASSERT_EQ(last["messages"].size(), 20U);
    EXPECT_EQ(last["messages"][19]["guid"], "G-119");
    EXPECT_TRUE(messages(fix, id, "3").body["messages"].empty());
}

TEST(Phone, ShowsNoMessagesOfWhatIsNotThere)
{
    const SandboxFixture fix;
    const std::string token = fix.link().token;
    EXPECT_EQ(messages(fix, "sub_0", "0").status, 404);
    EXPECT_EQ(messages(fix, fix.open(token, "x").id, "0").status, 409);
    const std::string id = fix.submit(token, "no archive");
    EXPECT_EQ(messages(fix, id, "0").status, 422);
    EXPECT_EQ(messages(fix, id, "-1").status, 400);
    EXPECT_EQ(messages(fix, id, "one").status, 400);
}

} // namespace
} // namespace vorn::testing
