#include "tests/VornMac/Window/Scenes.h"

#include "tests/VornMac/Model/AskingTokenStore.h"
#include "tests/VornMac/Window/ThreadScenes.h"

#include <chrono>
#include <random>
#include <stdexcept>
#include <string>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using Fixture = ModelFixture;

/// A chat worth looking at; the preview shows its end.
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
    constexpr std::int64_t apart = 40'000'000'000;
    constexpr std::int64_t earlier = 1281;
    std::int64_t date = 790'000'000'000'000'000 + apart;
    model.messages.database().execute("BEGIN"); // one transaction: each commit waits for the disk
    model.messages.messages(earlier, apart,
                            {.text = std::string("Earlier"), .isFromMe = std::int64_t{1}, .date = date});
    date += (earlier - 1) * apart;
    for (const Turn& turn : turns) {
        model.messages.message(
            {.text = std::string(turn.text), .isFromMe = std::int64_t{turn.fromMe}, .date = (date += apart)});
    }
    model.messages.database().execute("COMMIT");
}

/// Some megabytes that do not compress well, like years of conversation.
void fillLongChat(ModelFixture& model)
{
    std::minstd_rand random; // the same in each run
    const auto word = [&random] {
        std::string letters(2 + random() % 9, ' ');
        for (char& letter : letters) letter = static_cast<char>('a' + random() % 26);
        return letters + ' ';
    };
    std::string text;
    while (text.size() < 3'600'000) text += word();
    model.messages.message({.text = std::move(text), .isFromMe = std::int64_t{1}, .date = 790'000'000'000'000'000});
}

/// A chat with everything that a message can hold, and every reason to leave one out.
void fillVariedChat(ModelFixture& model)
{
    std::int64_t date = 790'000'000;
    const auto add = [&](MessageRow row) {
        row.date = (date += 95) * 1'000'000'000;
        return model.messages.message(row);
    };
    const auto said = [](bool fromMe, const char* text) {
        return MessageRow{.text = std::string(text), .isFromMe = std::int64_t{fromMe}};
    };
    model.messages.database().execute("DELETE FROM chat_message_join");
    const std::int64_t first = add(said(true, "When does the museum close today?"));
    add(said(false, "At six. Last entry is half past five, and Thursdays it stays open until nine."));
    add({.associatedMessageType = std::int64_t{2000}});
    add(said(true, "Then let's go on Thursday. Can you get two tickets for seven?"));
    add(said(false, "Done. They are in your mail, and here: https://museum.example/tickets/7f3a"));
    MessageRow reply =
        said(false, "By tram 12 it takes eighteen minutes. The stop is right in front of the door, so there "
                    "is no need to look for a place to park, which on a Thursday evening takes longer than "
                    "the way.");
    reply.threadOriginatorGuid = "guid-" + std::to_string(first);
    reply.dateEdited = std::int64_t{1};
    add(reply);
    add({.associatedMessageType = std::int64_t{2001}});
    const std::int64_t photo = add(said(true, "Is this the entrance?"));
    model.messages.attachment(photo, std::string("image/heic"), nullptr);
    add(said(true, "")); // empty
    date += 86'400;
    const std::int64_t files = add(said(true, "\uFFFC"));
    model.messages.attachment(files, std::string("application/pdf"), nullptr);
    model.messages.attachment(files, std::string("video/quicktime"), nullptr);
    add(said(false, "It is.\nThe cloakroom is on the left,\nthe lift behind it."));
    add({.itemType = std::int64_t{2}});
    add({.dateRetracted = std::int64_t{1}});
    MessageRow text = said(true, "תודה רבה!");
    text.service = std::string("SMS");
    add(text);
    add({.associatedMessageType = std::int64_t{2000}});
    add(said(false, "You're welcome. Enjoy the evening."));
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

/// The page with everything that was found.
void everything(WindowFixture& fix)
{
    fillVariedChat(fix.model);
    fix.model.launchSignedIn();
    fix.model.answer(Fixture::quest, questJSON());
    fix.model.runAll();
    fix.settle();
    fix.screenModel().everything()->open();
    fix.settle();
}

std::vector<Scene> everythingScenes()
{
    const auto searched = [](const char* words) {
        return [words](WindowFixture& fix) {
            everything(fix);
            fix.screenModel().everything()->setWords(words);
            fix.model.runAll();
        };
    };
    return {
        {"4-find-everything", everything},
        {"4-find-everything-by-key",
         [](WindowFixture& fix) {
             everything(fix);
             fix.lay(); // keys act on what is laid out
             for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Up}) fix.press(key);
         }},
        {"4-find-everything-searched", searched("museum")},
        {"4-find-everything-nothing", searched("ferry")},
        {"4-find-everything-saved",
         [](WindowFixture& fix) {
             everything(fix);
             fix.model.model().saveCopy(fix.model.folder / "vorn-nimbrel-export.zip");
             fix.model.runAll();
         }},
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
             fillLongChat(fix.model);
             uploading(fix);
             const HTTPRequest& part = fix.model.http->request(fix.model.http->waiting(Fixture::puts).value());
             const auto size = static_cast<std::int64_t>(bodyTextOf(part).size());
             for (int second = 1; second <= 84; ++second) { // an unsteady network
                 fix.model.advance(1s);
                 part.onBodyProgress((size * second + 199) / 200);
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
                                 threadScenes(), everythingScenes(), uploadScenes(), doneScenes()})
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }();
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
