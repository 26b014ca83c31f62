#include "VornMac/Text/ByteText.h"
#include "tests/VornMac/Window/Scenes.h"

#include <initializer_list>

#include <gmock/gmock.h>

// Every text that each screen shows in each phase, and no other, in the order of the structure.
namespace vorn::testing {
namespace {

using ::testing::ElementsAreArray;
using Texts = std::vector<std::string>;

Texts operator+(Texts first, const Texts& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const Texts badge = {"A"};

// Link.

const Texts linkHead = {"Link your phone", "Your phone links this Mac", "Scan with the Vorn app"};
const Texts linkSteps = {"1", "Open Vorn on your iPhone.",
                         "2", "Open the Nimbrel chat quest and tap Link a Mac.",
                         "3", "Point your camera at the code, then confirm on your phone."};
const Texts linkStepsDone = {"Open Vorn on your iPhone.", "Open the Nimbrel chat quest and tap Link a Mac.", "3",
                             "Point your camera at the code, then confirm on your phone."};
const Texts linkNote = {
    "Vorn for Mac only uploads your Nimbrel chat. Linking gives this Mac no access to anything else "
    "in your account."};

// Consent.

const Texts consent = {
    "Your Nimbrel chat",
    "Exactly what we upload",
    "What Vorn reads",
    "Your one-to-one conversation with Nimbrel: the text of each message, when it was sent, and who sent it.",
    "Links in those messages, and the type of any attachment (\"a photo\"), never the file itself.",
    "What Vorn never reads",
    "Any other conversation, group chats (even ones Nimbrel is in), contacts, photos or files.",
    "What happens next",
    "Your chat is pseudonymized and added to a dataset that trains AI assistants. You earn $12.50 when it's accepted.",
    "I understand what's uploaded",
    "I agree to share my Nimbrel chat",
    "Continue",
    "N",
    "Nimbrel",
    "iMessage",
    "Find me a dinner spot for Friday",
    "Lupa has a table for two at 7:30. Want me to book it?",
    "Booked. I added it to your calendar and texted you the address.",
    "Can you also remind me to buy flowers",
    "Done. I'll remind you Friday at 5 pm.",
    "Example. Your own chat never shows here.",
};

// Access.

const Texts accessHead = {"Allow Full Disk Access", "So Vorn can read Messages",
                          "macOS keeps your Messages history behind Full Disk Access. Vorn opens a private copy, reads "
                          "only your Nimbrel conversation, and deletes the copy right after."};
const Texts accessSteps = {"1",
                           "Open System Settings → Privacy & Security → Full Disk Access.",
                           "2",
                           "Turn on Vorn. Not in the list? Click +, or drag Vorn in from Finder.",
                           "Show Vorn in Finder",
                           "3",
                           "If macOS asks to quit and reopen Vorn, choose Quit & Reopen."};
const Texts accessStepsDone = {"Open System Settings → Privacy & Security → Full Disk Access.",
                               "Turn on Vorn. Not in the list? Click +, or drag Vorn in from Finder.",
                               "Show Vorn in Finder", "If macOS asks to quit and reopen Vorn, choose Quit & Reopen."};
const Texts openSettings = {"Back", "Open System Settings"};
const Texts goOn = {"Back", "Continue"};
const Texts settingsPane = {
    "System Settings → Privacy & Security",
    "Full Disk Access",
    "Allow the applications below to access data like Mail, Messages, Safari and Time Machine backups.",
    "Vorn",
    "Terminal",
    "Backup Utility",
};
const Texts denied = {"Waiting for access…",
                      "Turned on but still waiting? Quit and reopen Vorn. After an update macOS can forget the switch: "
                      "turn Vorn off and on again.",
                      "Quit & Reopen Vorn"};

// Find.

const Texts findActions = {"Back", "Upload chat"};
const Texts previewCaption = {"Only on this Mac. Nothing is uploaded yet."};
const Texts lookAgain = {"Back", "Look again"};
const Texts statistics = {"Found on this Mac",
                          "Your Nimbrel chat",
                          "Messages",
                          "1,290",
                          "Your messages",
                          "430",
                          "Nimbrel replies",
                          "860",
                          "Dates",
                          "Mar 8, 2023 – Jan 14, 2026"};
const Texts preview = {
    "When does the museum close today?",
    "At six. Last entry is half past five, and Thursdays it stays open until nine.",
    "Then let's go on Thursday. Can you get two tickets for seven?",
    "Done. Two tickets for Thursday at 7 pm are in your mail.",
    "The number 12 tram stops right in front of it, if you would rather not look for a place to park.",
    "Perfect, thank you"};
const Texts chatHead = {"N", "Nimbrel", "iMessage"};
const Texts underChat = previewCaption + Texts{"See everything we upload"} + badge;
const Texts chat = chatHead + preview + underChat;
const Texts found = findActions + chat;
const Texts tooSmall = {
    "There isn't enough Nimbrel conversation yet. Keep chatting and come back with a few conversations "
    "and at least 10 of your own messages."};

Texts notFound(const std::string& title, const Texts& content, const Texts& actions = lookAgain)
{
    return Texts{title, "Your Nimbrel chat"} + content + actions + badge;
}

/// The find screen on a chat of one day: `mine` and `theirs` count its messages.
Texts foundChat(const std::string& mine, const std::string& theirs, const Texts& messages)
{
    return Texts{"Found on this Mac",
                 "Your Nimbrel chat",
                 "Messages",
                 std::to_string(messages.size()),
                 "Your messages",
                 mine,
                 "Nimbrel replies",
                 theirs,
                 "Dates",
                 "Jan 13, 2026 – Jan 13, 2026"} +
           findActions + chatHead + messages + underChat;
}

std::string repeated(const std::string& text, std::size_t size)
{
    std::string all;
    while (all.size() < size) all += text;
    return all.substr(0, size);
}

const Texts longMessages = {repeated("As long as it may be. ", 140) + "…", repeated("And as long again. ", 140) + "…"};

// Everything.

const Texts leftOut = {
    "Everything we upload",
    "Your Nimbrel chat",
    "Left out",
    "Reactions",
    "3",
    "Hearts, thumbs and other tapbacks.",
    "Unsent messages",
    "1",
    "Their senders unsent them.",
    "Notices",
    "1",
    "Notes by Messages itself, such as a changed name.",
    "Empty messages",
    "1",
    "They have neither text nor attachments.",
    "The files of attachments are never read.",
    "Also in the archive",
    "For each message: its identifier in Messages, its chat's and, in a reply, that of the original message.",
    "Nimbrel's addresses (+15550102030), these counts, the time of the export, and the versions of Vorn and macOS."};
const Texts pageActions = {"Back", "Save a copy…"};
const Texts searching = {"Search messages", "10 messages"};
const Texts closing = {"Jan 13, 2026", "You", "12:28:15\u202FPM · iMessage", "When does the museum close today?"};
const Texts tickets = {"Nimbrel", "12:34:35\u202FPM · iMessage",
                       "Done. They are in your mail, and here: https://museum.example/tickets/7f3a",
                       "https://museum.example/tickets/7f3a"};
const Texts tram = {
    "Nimbrel", "12:36:10\u202FPM · iMessage · Edited · Reply",
    "By tram 12 it takes eighteen minutes. The stop is right in front of the door, so there is no need to "
    "look for a place to park, which on a Thursday evening takes longer than the way."};
const Texts entrance = {"You", "12:39:20\u202FPM · iMessage", "Is this the entrance?", "Photo (image/heic)"};
const Texts files = {"Jan 14, 2026", "You", "12:42:30\u202FPM · iMessage",
                     "File (application/pdf)\nVideo (video/quicktime)"};
const Texts beginning = closing +
                        Texts{"Nimbrel",
                              "12:29:50\u202FPM · iMessage",
                              "At six. Last entry is half past five, and Thursdays it stays open until nine.",
                              "You",
                              "12:33:00\u202FPM · iMessage",
                              "Then let's go on Thursday. Can you get two tickets for seven?"} +
                        tickets + tram + entrance + files;
const Texts end =
    tram + entrance + files +
    Texts{"Nimbrel", "12:44:05\u202FPM · iMessage", "It is.\nThe cloakroom is on the left,\nthe lift behind it.",
          "You",     "12:48:50\u202FPM · SMS",      "תודה רבה!",
          "Nimbrel", "12:52:00\u202FPM · iMessage", "You're welcome. Enjoy the evening."};

// Upload and done.

Texts uploading(const Texts& status)
{
    return Texts{"Uploading", "Your Nimbrel chat", "vorn-nimbrel-export.zip"} + status;
}

const Texts review = {"This usually takes a minute or two.",
                      "You can close this window. The result also shows on the quest in the Vorn app."};

/// A placeholder for amounts of bytes, which depend on the machine.
const std::string sent = "{sent}";

Texts filledIn(Texts texts, const AppModel& model)
{
    const auto& progress = model.uploadProgress();
    for (std::string& text : texts) {
        if (text.starts_with(sent)) text.replace(0, sent.size(), partText(progress.bytesSent, progress.totalBytes));
    }
    return texts;
}

/// The texts of a scene in order, followed by those of its panel in any order.
struct Case {
    std::string scene;
    Texts texts;
    Texts panel = {};
};

std::vector<Case> allCases()
{
    const auto reward = [](const std::string& status, const std::string& amount = "$12.50") {
        return Texts{"Reward", amount, "Chat export quest", status, "A"};
    };
    const Texts back = {"Back to your chat"};
    return {
        {"0-keychain-waiting", {"Waiting for your keychain…"}},
        {"0-keychain-refused",
         {"Your keychain is still locked, so Vorn can't tell whether this Mac is linked.", "Try again",
          "Link this Mac again"}},
        {"1-link-loading", linkHead + linkSteps + Texts{"Getting a code…"} + linkNote},
        {"1-link-showing",
         linkHead + linkSteps + Texts{"Waiting for your phone"} + linkNote + Texts{"New code in ", "1:58"}},
        {"1-link-scanned", linkHead + linkStepsDone + Texts{"Scanned. Confirm Link this Mac on your phone."} +
                               linkNote + Texts{"Confirm on your phone"}},
        {"1-link-rejected",
         linkHead + linkSteps + Texts{"Your phone declined the link. Here's a new code."} + linkNote}, // none yet
        {"1-link-expired", linkHead + linkSteps + Texts{"Waiting for your phone"} + linkNote},
        {"1-link-failed",
         linkHead + linkSteps + Texts{"You're offline. Vorn will retry."} + linkNote + Texts{"Try again"}},
        {"2-consent", consent + badge},
        {"2-consent-understood", consent + badge},
        {"2-consent-ready", consent + badge},
        {"3-access-denied", accessHead + accessSteps + denied + openSettings + settingsPane + badge},
        {"3-access-no-database",
         accessHead + accessSteps +
             Texts{"Messages isn't set up on this Mac. Sign in to Messages with the Apple ID you "
                   "text Nimbrel from, then come back."} +
             openSettings + settingsPane + badge},
        {"3-access-granted", accessHead + accessStepsDone + Texts{"Access granted."} + goOn + settingsPane + badge},
        {"4-find-loading",
         notFound("Looking in Messages…", {"Reading a private copy of your Messages history…"}, findActions)},
        {"4-find-unavailable", notFound("Not available yet", {"Nimbrel export isn't available yet. Check back soon."})},
        {"4-find-not-configured", notFound("Not available yet", {"Nimbrel export isn't set up yet. Try again later."})},
        {"4-find-not-found",
         notFound(
             "Not found on this Mac",
             {"No conversation with Nimbrel on this Mac.",
              "Make sure Messages on this Mac is signed in with the Apple ID you text Nimbrel from, and that Messages "
              "in iCloud is on so your history syncs here."})},
        {"4-find-failed", notFound("Something went wrong", {"Vorn can't reach the server right now."})},
        {"4-find-found", statistics + found},
        {"4-find-found-in-review",
         statistics + Texts{"Your last upload is being checked.", "Back", "Look again", "Upload chat"} + chat},
        {"4-find-found-cooldown", statistics + Texts{"Paid. You can upload again on Mar 15, 2026."} + found},
        {"4-find-found-rejected", statistics + Texts{"Last time: " + tooSmall.front()} + found},
        {"4-find-one-message", foundChat("1", "0", {"Hi"})},
        {"4-find-attachments", foundChat("2", "1", {"Attachment", "Attachment", "Attachment"})},
        {"4-find-right-to-left",
         foundChat("2", "2",
                   {"שלום, מתי נסגר המוזיאון היום?", "בשש. הכניסה האחרונה בחמש וחצי, וביום חמישי פתוח עד תשע בערב.",
                    "متى يغلق المتحف اليوم؟",
                    "في السادسة مساءً، وآخر دخول في الخامسة والنصف. Museum Café يغلق قبل ذلك."})},
        {"4-find-emoji", foundChat("2", "2", {"☺", "♥♥♥ ☺", "Dinner ☕ at 8?\nOr later ☾", "See you ☺"})},
        {"4-find-long-words", foundChat("2", "2",
                                        {"Rindfleischetikettierungsüberwachungsaufgabenübertragungsgesetz",
                                         "https://example.com/" + std::string(90, 'a'), std::string(60, 'W'), "ok"})},
        {"4-find-long-chat",
         foundChat("3", "3",
                   longMessages + longMessages +
                       Texts{longMessages.front(), "The newest. The newest. The newest. The newest."})},
        {"4-find-everything", leftOut + pageActions, searching + beginning + badge},
        {"4-find-everything-by-key", leftOut + pageActions, searching + end + badge},
        {"4-find-everything-searched", leftOut + pageActions, Texts{"2 of 10 messages"} + closing + tickets + badge},
        {"4-find-everything-nothing", leftOut + pageActions,
         Texts{"0 of 10 messages", "No message contains “ferry”."} + badge},
        {"4-find-everything-saved", leftOut + Texts{"Saved as vorn-nimbrel-export.zip on this Mac."} + pageActions,
         searching + beginning + badge},
        {"5-upload-preparing", uploading({"Packing your chat…"}), reward("Packing")},
        {"5-upload-uploading",
         uploading({"42 %", sent + ", about 2 minutes left", "Uploading securely. Keep this window open."}),
         reward("Uploading")},
        {"5-upload-finishing", uploading({"100 %", sent, "Finishing up…"}), reward("Finishing")},
        {"5-upload-failed", uploading({"Your chat is larger than the upload limit.", "Try again"}), reward("Not sent")},
        {"6-done-analyzing", Texts{"Upload received", "Checking your chat"} + review + back, reward("Checking")},
        {"6-done-review-pending", Texts{"Upload received", "A person is checking it"} + review + back,
         reward("A person is checking")},
        {"6-done-approved",
         Texts{"You earned $15.00", "Thanks for your Nimbrel chat", "The reward is in your Vorn balance.",
               "Upload again on Mar 15, 2026 with your newer chats."} +
             back,
         reward("Paid", "$15.00")},
        {"6-done-approved-unknown-reward",
         Texts{"You earned the quest reward", "Thanks for your Nimbrel chat", "The reward is in your Vorn balance."} +
             back,
         reward("Paid", "the quest reward")},
        {"6-done-rejected", Texts{"Not accepted", "This time"} + tooSmall + back, reward("Not accepted")},
        {"6-done-expired",
         Texts{"Upload stopped", "Nothing was sent", "The upload didn't finish. Try again from your chat."} + back,
         reward("Stopped")},
    };
}

TEST(ScreenTexts, AreWrittenForEveryScene)
{
    Texts written;
    for (const Case& row : allCases()) written.push_back(row.scene);
    Texts scenes;
    for (const Scene& scene : allScenes()) scenes.push_back(scene.name);
    EXPECT_EQ(written, scenes);
}

TEST(ScreenTexts, AreExactlyThoseOfTheirPhase)
{
    for (const Case& row : allCases()) {
        SCOPED_TRACE(row.scene);
        WindowFixture fix;
        play(fix, row.scene);
        Texts form = fix.words();
        ASSERT_GE(form.size(), row.panel.size());
        const Texts panel(form.end() - static_cast<std::ptrdiff_t>(row.panel.size()), form.end());
        form.resize(form.size() - panel.size());
        EXPECT_THAT(form, ElementsAreArray(filledIn(row.texts, fix.model.model())));
        EXPECT_THAT(panel, ::testing::UnorderedElementsAreArray(row.panel));
    }
}

TEST(ScreenTexts, NameTheRewardOnceItIsKnown)
{
    WindowFixture fix;
    fix.model.launchSignedIn(false);
    fix.settle();
    EXPECT_TRUE(
        fix.shows("Your chat is pseudonymized and added to a dataset that trains AI assistants. You earn the quest "
                  "reward when it's accepted."));
    fix.model.answer(ModelFixture::quest, questJSON());
    fix.settle();
    EXPECT_TRUE(
        fix.shows("Your chat is pseudonymized and added to a dataset that trains AI assistants. You earn $12.50 "
                  "when it's accepted."));
}

} // namespace
} // namespace vorn::testing
