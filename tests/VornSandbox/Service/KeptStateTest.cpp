#include "tests/VornSandbox/Service/SandboxFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using sandbox::ServiceOptions;
using ::testing::IsEmpty;
using ::testing::Not;

const std::string archive = std::string(1000, 'a') + "b";

ServiceOptions keptIn(const TemporaryFolder& folder)
{
    ServiceOptions options = smallParts();
    options.state = folder / "state";
    return options;
}

TEST(KeptState, RemembersSessionsAndReviews)
{
    const TemporaryFolder folder;
    Tokens tokens;
    std::string id;
    {
        const SandboxFixture first(keptIn(folder));
        tokens = first.link();
        id = first.submit(tokens.token, archive);
    }
    SandboxFixture second(keptIn(folder));
    EXPECT_EQ(second.submission(tokens.token, id).body["status"], "analyzing");
    second.advance(6s);
    EXPECT_EQ(second.quest(tokens.token)["status"], "approved");
    EXPECT_EQ(second.api("POST", "auth/desktop/refresh", json{{"refreshToken", tokens.refreshToken}}).status, 200);
    EXPECT_EQ(readFile(folder / "state" / "uploads" / id / "archive.zip"), archive);
}

TEST(KeptState, LetsAnUploadGoOn)
{
    const TemporaryFolder folder;
    std::string token;
    Upload upload;
    std::string base;
    {
        const SandboxFixture first(keptIn(folder));
        token = first.link().token;
        upload = first.open(token, archive);
        first.put(upload.urls.at(1), archive.substr(0, 1000));
        base = first.baseURL();
    }
    const SandboxFixture second(keptIn(folder));
    for (auto& [number, url] : upload.urls) url.replace(0, base.size(), second.baseURL()); // the port is another one
    const std::string firstTag = '"' + hexSHA256(archive.substr(0, 1000)).substr(0, 32) + '"';
    const std::string secondTag = second.put(upload.urls.at(2), "b").headers.at("etag");
    const json parts{{{"partNumber", 1}, {"etag", firstTag}}, {{"partNumber", 2}, {"etag", secondTag}}};
    EXPECT_EQ(second.complete(token, upload, parts, archive).status, 200);
}

TEST(KeptState, HoldsNoSecretInTheClear)
{
    const TemporaryFolder folder;
    json link;
    Tokens tokens;
    {
        const SandboxFixture fix(keptIn(folder));
        link = fix.createLink();
        tokens = fix.link();
    }
    std::string stored;
    for (const auto& file : std::filesystem::directory_iterator(folder / "state")) {
        if (file.is_regular_file()) stored += readFile(file.path());
    }
    ASSERT_THAT(stored, Not(IsEmpty()));
    const std::string code = link["qrPayload"].get<std::string>().substr(17);
    for (const std::string& secret : {link["pollSecret"].get<std::string>(), code, tokens.token, tokens.refreshToken}) {
        EXPECT_EQ(stored.find(secret), std::string::npos);
    }
}

TEST(KeptState, IsForItsOwnerOnly)
{
    using std::filesystem::perms;
    const TemporaryFolder folder;
    for (const char* run : {"first", "second"}) { // the second finds permissions as an older version set them
        SCOPED_TRACE(run);
        const SandboxFixture fix(keptIn(folder));
        const Upload upload = fix.open(fix.link().token, archive);
        fix.put(upload.urls.at(1), archive.substr(0, 1000));
        std::size_t files = 0;
        EXPECT_EQ(status(folder / "state").permissions(), perms::owner_all);
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "state")) {
            const perms expected = entry.is_directory() ? perms::owner_all : perms::owner_read | perms::owner_write;
            EXPECT_EQ(entry.status().permissions(), expected) << entry.path();
            if (!entry.is_directory()) ++files;
        }
        EXPECT_GE(files, 4U); // database, its log and the index of that, a part
        permissions(folder / "state" / "uploads", perms::owner_all | perms::group_all | perms::others_all);
        permissions(folder / "state" / "state.sqlite", perms::owner_all | perms::others_read);
    }
}

TEST(KeptState, IsKeptByOneServiceAtATime)
{
    const TemporaryFolder folder;
    const SandboxFixture first(keptIn(folder));
    try {
        const SandboxFixture second(keptIn(folder));
        ADD_FAILURE() << "two at once";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(std::string(error.what()),
                  "cannot keep the state in " + (folder / "state").string() + ": another sandbox is using it");
    }
}

TEST(KeptState, StartsAnewWithoutAFolder)
{
    std::string token;
    {
        const SandboxFixture first;
        token = first.link().token;
    }
    const SandboxFixture second;
    EXPECT_EQ(second.api("GET", "desktop/nimbrel", {}, token).status, 401);
}

TEST(KeptState, ForgetsAccountsThatAreNoLongerThere)
{
    const TemporaryFolder folder;
    ServiceOptions options = keptIn(folder);
    options.settings.users = {"Sam", "Robin"};
    std::string token;
    {
        const SandboxFixture first(options);
        token = first.link("usr_2").token;
    }
    options.settings.users = {"Sam"};
    const SandboxFixture second(options);
    EXPECT_EQ(second.api("GET", "desktop/nimbrel", {}, token).status, 401);
}

} // namespace
} // namespace vorn::testing
