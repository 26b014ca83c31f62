#include "tests/VornMac/Window/Scenes.h"

#include "tests/VornMac/Model/AskingTokenStore.h"
#include "tests/VornMac/Window/ThreadScenes.h"

#include <chrono>
#include <stdexcept>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using Fixture = ModelFixture;

/// A chat worth looking at; what is previewed is its end.
void fillChat(ModelFixture& model)
{
    struct Turn {
        bool fromMe;
        const char* text;
    };
    constexpr Turn turns[] = {
        {true, "When does the museum close today?"},
        {false, "At six. Last entry is half past five, and Thursdays it stays open until nine."},
        {true, "Then let's go on Thursday. Can you get two tickets for seven?"},
        {false, "Done. Two tickets for Thursday at 7 pm are in your mail."},
        {false, "The number 12 tram stops right in front of it, if you would rather not look for a place to park."},
        {true, "Perfect, thank you"},
    };
    constexpr std::int64_t secondsPerMessage = 40;
    std::int64_t seconds = 790'000'000;
    model.messages.database().execute("BEGIN"); // one commit: each waits for the disk
    for (int earlier = 0; earlier < 1281; ++earlier) {
        model.messages.message({.text = std::string("Earlier"),
                                .isFromMe = std::int64_t{earlier % 3 == 0},
                                .date = (seconds += secondsPerMessage) * 1'000'000'000});
    }
    for (const Turn& turn : turns) {
        model.messages.message({.text = std::string(turn.text),
                                .isFromMe = std::int64_t{turn.fromMe},
                                .date = (seconds += secondsPerMessage) * 1'000'000'000});
    }
    model.messages.database().execute("COMMIT");
}

void link(WindowFixture& fix, const std::string& status = "")
{
    fix.model.launch();
    fix.model.answer(Fixture::links, linkJSON(2000, "2026-03-01T09:01:58Z"));
    if (status.empty()) return;
    fix.model.advance(2s);
    fix.model.answer(Fixture::polls, pollJSON(status));
}

void access(WindowFixture& fix, FullDiskAccessStatus status)
{
    fix.model.setAccess(status);
    fix.model.launchSignedIn();
}

void found(WindowFixture& fix, const std::string& quest = questJSON())
{
    fillChat(fix.model);
    fix.model.launchSignedIn();
    fix.model.answer(Fixture::quest, quest);
    fix.model.runAll();
}

void uploading(WindowFixture& fix)
{
    fillChat(fix.model);
    fix.model.launchUploading();
}

/// On the done screen, with the quest that follows the outcome.
void done(WindowFixture& fix, const std::string& submission = "")
{
    fillChat(fix.model);
    fix.model.launchDone();
    if (submission.empty()) return;
    fix.model.advance(5s);
    fix.model.answer(Fixture::review, submission);
}

std::string questWith(const std::string& members)
{
    return R"({"quest":{"id":"quest-1","rewardUsd":12.5,)" + members +
           R"(},"handles":["+15550102030"],"maxBytes":5000000000})";
}

std::string outcome(const std::string& status, const std::string& members)
{
    return R"({"id":"sub-1","questId":"quest-1","status":")" + status + R"(",)" + members + R"(,"assetsRemaining":0})";
}

std::vector<Scene> keychainScenes()
{
    return {
        {"0-keychain-waiting",
         [](WindowFixture& fix) {
             fix.model.store = std::make_shared<AskingTokenStore>();
             fix.model.launch();
             fix.model.advance(500ms);
         }},
        {"0-keychain-refused",
         [](WindowFixture& fix) {
             const auto keychain = std::make_shared<AskingTokenStore>();
             keychain->refusal = KeychainError(KeychainError::interactionNotAllowed);
             fix.model.store = keychain;
             fix.model.launch();
             fix.model.runAll();
         }},
    };
}

std::vector<Scene> linkScenes()
{
    return {
        {"1-link-loading", [](WindowFixture& fix) { fix.model.launch(); }},
        {"1-link-showing", [](WindowFixture& fix) { link(fix); }},
        {"1-link-scanned", [](WindowFixture& fix) { link(fix, "scanned"); }},
        {"1-link-rejected", [](WindowFixture& fix) { link(fix, "rejected"); }},
        {"1-link-expired",
         [](WindowFixture& fix) {
             link(fix);
             fix.model.advance(118s);
         }},
        {"1-link-failed",
         [](WindowFixture& fix) {
             fix.model.launch();
             fix.model.fail(Fixture::links, URLError::Code::notConnectedToInternet);
         }},
    };
}

std::vector<Scene> consentScenes()
{
    const auto start = [](WindowFixture& fix) {
        fix.model.launchSignedIn(false);
        fix.model.answer(Fixture::quest, questJSON());
    };
    return {
        {"2-consent", start},
        {"2-consent-understood",
         [start](WindowFixture& fix) {
             start(fix);
             fix.model.model().setUnderstandsUpload(true);
         }},
        {"2-consent-ready",
         [start](WindowFixture& fix) {
             start(fix);
             fix.model.model().setUnderstandsUpload(true);
             fix.model.model().setAgreesToShare(true);
         }},
    };
}

std::vector<Scene> accessScenes()
{
    return {
        {"3-access-denied", [](WindowFixture& fix) { access(fix, FullDiskAccessStatus::denied); }},
        {"3-access-no-database", [](WindowFixture& fix) { access(fix, FullDiskAccessStatus::noDatabase); }},
        {"3-access-granted",
         [](WindowFixture& fix) {
             fix.model.launchSignedIn();
             fix.model.model().go(Step::access);
         }},
    };
}

std::vector<Scene> findScenes()
{
    const auto scanned = [](const std::string& quest) { return [quest](WindowFixture& fix) { found(fix, quest); }; };
    return {
        {"4-find-loading", [](WindowFixture& fix) { fix.model.launchSignedIn(); }},
        {"4-find-unavailable",
         [](WindowFixture& fix) {
             fix.model.launchSignedIn();
             fix.model.refuse(Fixture::quest, 404);
         }},
        {"4-find-not-configured", scanned(questJSON("available", ""))},
        {"4-find-not-found", scanned(questJSON("available", R"("+15550109999")"))},
        {"4-find-failed",
         [](WindowFixture& fix) {
             fix.model.launchSignedIn();
             fix.model.fail(Fixture::quest, URLError::Code::cannotConnectToHost);
         }},
        {"4-find-found", scanned(questJSON())},
        {"4-find-found-in-review", scanned(questJSON("submitted"))},
        {"4-find-found-cooldown", scanned(questWith(R"("status":"approved","availableAt":"2026-03-15T00:00:00Z")"))},
        {"4-find-found-rejected", scanned(questWith(R"("status":"rejected","rejectionReasonKey":"export_too_small")"))},
    };
}

std::vector<Scene> uploadScenes()
{
    return {
        {"5-upload-preparing",
         [](WindowFixture& fix) {
             found(fix);
             fix.model.model().upload();
             fix.model.run();
         }},
        {"5-upload-uploading",
         [](WindowFixture& fix) {
             uploading(fix);
             const HTTPRequest& part = fix.model.http->request(fix.model.http->waiting(Fixture::puts).value());
             const auto size = static_cast<std::int64_t>(bodyTextOf(part).size());
             for (int second = 1; second <= 84; ++second) { // a network of some age
                 fix.model.advance(1s);
                 part.onBodyProgress(size * second / 200);
                 fix.model.run();
             }
         }},
        {"5-upload-finishing",
         [](WindowFixture& fix) {
             uploading(fix);
             fix.model.http->acknowledge(fix.model.http->waiting(Fixture::puts).value(), "\"tag-1\"");
         }},
        {"5-upload-failed",
         [](WindowFixture& fix) {
             found(fix, questJSON("available", R"("+15550102030")", 10));
             fix.model.model().upload();
             fix.model.runAll();
         }},
    };
}

std::vector<Scene> doneScenes()
{
    const auto reviewed = [](const std::string& submission) {
        return [submission](WindowFixture& fix) { done(fix, submission); };
    };
    return {
        {"6-done-analyzing", [](WindowFixture& fix) { done(fix); }},
        {"6-done-review-pending", reviewed(submissionJSON("review_pending"))},
        {"6-done-approved",
         [](WindowFixture& fix) {
             done(fix, outcome("approved", R"("rejectionReasonKey":null,"rewardUsd":"15.00")"));
             fix.model.answer(Fixture::quest, questWith(R"("status":"approved","availableAt":"2026-03-15T00:00:00Z")"));
         }},
        {"6-done-approved-unknown-reward",
         [](WindowFixture& fix) {
             done(fix, outcome("approved", R"("rejectionReasonKey":null,"rewardUsd":null)"));
             fix.model.answer(Fixture::quest, R"({"quest":{"id":"quest-1","rewardUsd":null,"status":"approved"},)"
                                              R"("handles":["+15550102030"],"maxBytes":5000000000})");
         }},
        {"6-done-rejected",
         reviewed(outcome("rejected", R"("rejectionReasonKey":"export_too_small","rewardUsd":null)"))},
        {"6-done-expired", reviewed(submissionJSON("expired"))},
    };
}

} // namespace

const std::vector<Scene>& allScenes()
{
    static const std::vector<Scene> scenes = [] {
        std::vector<Scene> all;
        for (const auto& part : {keychainScenes(), linkScenes(), consentScenes(), accessScenes(), findScenes(),
                                 threadScenes(), uploadScenes(), doneScenes()})
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }();
    return scenes;
}

const std::vector<MovingScene>& movingScenes()
{
    static const std::vector<MovingScene> scenes = {
        {"4-find-loading-shimmer", "4-find-loading", 600ms},
        {"5-upload-preparing-sweep", "5-upload-preparing", 700ms},
        {"6-done-approved-moment-1", "6-done-approved", 120ms},
        {"6-done-approved-moment-2", "6-done-approved", 350ms},
        {"6-done-approved-moment-3", "6-done-approved", 900ms},
    };
    return scenes;
}

void play(WindowFixture& fix, const std::string& name)
{
    for (const Scene& scene : allScenes()) {
        if (scene.name != name) continue;
        scene.play(fix);
        fix.settle();
        return;
    }
    throw std::invalid_argument("there is no scene " + name);
}

} // namespace vorn::testing
