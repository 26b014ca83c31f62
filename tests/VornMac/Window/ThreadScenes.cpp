#include "tests/VornMac/Window/ThreadScenes.h"

#include "tests/support/service/ServiceAnswers.h"

namespace vorn::testing {
namespace {

using Chat = std::function<void(MessagesFixture&)>;

/// The find screen on a chat that `fill` writes.
Scene scene(const char* name, const Chat& fill)
{
    return {std::string("4-find-") + name, [fill](WindowFixture& fix) {
                for (const char* table : {"message", "chat_message_join"}) // what every fixture begins with
                    fix.model.messages.database().execute(std::string("DELETE FROM ") + table);
                fill(fix.model.messages);
                fix.model.launchSignedIn();
                fix.model.answer(ModelFixture::quest, questJSON());
                fix.model.runAll();
            }};
}

/// A chat in which `texts` come from the user and the assistant in turn, the user first.
Chat saying(const std::vector<std::string>& texts)
{
    return [texts](MessagesFixture& messages) {
        std::int64_t seconds = 790'000'000;
        bool fromMe = true;
        for (const std::string& text : texts) {
            messages.message({.text = text, .isFromMe = std::int64_t{fromMe}, .date = (seconds += 60) * 1'000'000'000});
            fromMe = !fromMe;
        }
    };
}

/// Messages that have an attachment and no text, as photos are sent.
void sendAttachments(MessagesFixture& messages)
{
    std::int64_t seconds = 790'000'000;
    for (const bool fromMe : {true, true, false}) {
        const auto row = messages.message(
            {.text = nullptr, .isFromMe = std::int64_t{fromMe}, .date = (seconds += 60) * 1'000'000'000});
        messages.attachment(row, std::string("image/jpeg"), nullptr);
    }
}

std::string repeated(const std::string& text, int times)
{
    std::string all;
    for (int time = 0; time < times; ++time) all += text;
    return all;
}

} // namespace

std::vector<Scene> threadScenes()
{
    return {
        scene("one-message", saying({"Hi"})),
        scene("attachments", sendAttachments),
        scene("right-to-left",
              saying({"שלום, מתי נסגר המוזיאון היום?", "בשש. הכניסה האחרונה בחמש וחצי, וביום חמישי פתוח עד תשע בערב.",
                      "متى يغلق المتحف اليوم؟",
                      "في السادسة مساءً، وآخر دخول في الخامسة والنصف. Museum Café يغلق قبل ذلك."})),
        scene("emoji", saying({"☺", "♥♥♥ ☺", "Dinner ☕ at 8?\nOr later ☾", "See you ☺"})),
        scene("long-words", saying({"Rindfleischetikettierungsüberwachungsaufgabenübertragungsgesetz",
                                    "https://example.com/" + repeated("a", 90), repeated("W", 60), "ok"})),
        scene("long-chat", saying({repeated("As long as it may be. ", 7), repeated("And as long again. ", 8),
                                   repeated("As long as it may be. ", 7), repeated("And as long again. ", 8),
                                   repeated("As long as it may be. ", 7), repeated("The newest. ", 4)})),
    };
}

} // namespace vorn::testing
