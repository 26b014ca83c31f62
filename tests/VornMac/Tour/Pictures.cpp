#include "tests/VornMac/Tour/Pictures.h"

#include "tests/VornMac/Tour/Sheets.h"
#include "tests/VornMac/Window/Scenes.h"

#include <string_view>
#include <utility>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;

constexpr double tolerated = 0.0002;      // of the pixels; the dot of an i has more
constexpr double toleratedMoving = 0.025; // a moving part may be a frame late on a busy machine

constexpr QSize smallest(1040, 700);
constexpr QSize largest(3840, 2160);

Picture picture(std::string name, const Shot& shot)
{
    const auto take = [shot](QSize window) {
        Shot placed = shot;
        if (placed.size.isEmpty()) placed.size = window;
        return Stage(placed).picture();
    };
    return {std::move(name), take, shot.moment.count() > 0 ? toleratedMoving : tolerated};
}

std::function<void(WindowFixture&)> scene(std::string name)
{
    return [name = std::move(name)](WindowFixture& window) { play(window, name); };
}

/// A chat is found, and the user goes back.
void leaveFind(WindowFixture& window)
{
    play(window, "4-find-found");
    window.model.model().go(Step::consent);
}

std::vector<Picture> movingPictures()
{
    return {
        picture("2-consent-fading", {.play = leaveFind, .moment = 110ms}),
        picture("4-find-loading-shimmer", {.play = scene("4-find-loading"), .moment = 600ms}),
        picture("5-upload-preparing-sweep", {.play = scene("5-upload-preparing"), .moment = 700ms}),
        picture("6-done-approved-moment-1", {.play = scene("6-done-approved"), .moment = 120ms}),
        picture("6-done-approved-moment-2", {.play = scene("6-done-approved"), .moment = 350ms}),
        picture("6-done-approved-moment-3", {.play = scene("6-done-approved"), .moment = 900ms}),
    };
}

std::vector<Picture> sizedPictures()
{
    return {
        picture("1-link-showing-smallest", {.play = scene("1-link-showing"), .size = smallest}),
        picture("2-consent-ready-smallest", {.play = scene("2-consent-ready"), .size = smallest}),
        picture("3-access-denied-smallest", {.play = scene("3-access-denied"), .size = smallest}),
        picture("4-find-found-rejected-smallest", {.play = scene("4-find-found-rejected"), .size = smallest}),
        picture("4-find-found-largest", {.play = scene("4-find-found"), .size = largest}),
        picture("1-link-showing-large-text", {.play = scene("1-link-showing"), .textScale = 1.5}),
        picture("2-consent-ready-large-text", {.play = scene("2-consent-ready"), .textScale = 1.5}),
        picture("3-access-denied-large-text-smallest",
                {.play = scene("3-access-denied"), .size = smallest, .textScale = 1.5}),
        picture("4-find-found-large-text", {.play = scene("4-find-found"), .textScale = 1.5}),
        picture("4-find-everything-large-text", {.play = scene("4-find-everything"), .textScale = 1.5}),
        picture("5-upload-uploading-large-text", {.play = scene("5-upload-uploading"), .textScale = 1.5}),
        picture("6-done-approved-large-text", {.play = scene("6-done-approved"), .textScale = 1.5}),
    };
}

/// Presses Tab until `name` has the focus.
std::function<void(WindowFixture&)> tabTo(std::string name)
{
    return [name = std::move(name)](WindowFixture& window) {
        constexpr int enough = 20;
        for (int presses = 0; presses < enough && window.focused() != name; ++presses) window.press(Qt::Key_Tab);
    };
}

/// Ends the review with an answer that has `members`, and then answers the request for the quest.
std::function<void(WindowFixture&)> reviewed(std::string members, std::string quest)
{
    return [members = std::move(members), quest = std::move(quest)](WindowFixture& window) {
        window.model.launchDone();
        window.model.advance(5s);
        window.model.answer(ModelFixture::review,
                            R"({"id":"sub-1","questId":"quest-1",)" + members + R"("assetsRemaining":0})");
        window.model.answer(ModelFixture::quest, quest);
    };
}

/// Removes the dates from the card itself: a result with messages always has them.
void forgetDates(WindowFixture& window)
{
    const auto isCard = [](const QQuickItem* item) {
        return std::string_view(item->metaObject()->className()).starts_with("StatisticsCard");
    };
    for (auto* item : itemsBelow(window.window().contentItem(), [](QQuickItem*) { return true; }))
        if (isCard(item)) item->setProperty("labels", item->property("labels").toStringList().mid(0, 3));
}

std::vector<Picture> posedPictures()
{
    return {
        picture("1-link-failed-focused", {.play = scene("1-link-failed"), .pose = tabTo("Try again")}),
        picture("2-consent-about",
                {.play = scene("2-consent"), .pose = [](WindowFixture& window) { window.press(Qt::Key_F1); }}),
        picture("2-consent-menu",
                {.play = scene("2-consent"), .pose = [](WindowFixture& window) { window.click("Account"); }}),
        picture("2-consent-focused", {.play = scene("2-consent"), .pose = tabTo("I understand what's uploaded")}),
        picture("3-access-denied-focused", {.play = scene("3-access-denied"), .pose = tabTo("Show Vorn in Finder")}),
        picture("4-find-found-menu-by-key",
                {.play = scene("4-find-found"),
                 .pose = [](WindowFixture& window) { window.pressOn("Account", Qt::Key_Space); }}),
        picture("4-find-found-without-dates", {.play = scene("4-find-found"), .pose = forgetDates}),
        picture("6-done-approved-without-date",
                {.play = reviewed(R"("status":"approved","rewardUsd":"15.00",)", questJSON("approved"))}),
        picture("4-find-long-chat-focused", {.play = scene("4-find-long-chat"), .pose = tabTo("Messages")}),
    };
}

} // namespace

std::vector<Picture> allPictures()
{
    std::vector<Picture> all;
    for (const Scene& each : allScenes()) all.push_back(picture(each.name, {.play = each.play}));
    for (auto& part : {movingPictures(), sizedPictures(), posedPictures()})
        all.insert(all.end(), part.begin(), part.end());
    all.push_back({"6-done-rejected-reasons", rejectionSheet, tolerated});
    all.push_back({"7-controls", controlSheet, tolerated});
    all.push_back({"7-notifications", noticeSheet, tolerated});
    return all;
}

} // namespace vorn::testing
