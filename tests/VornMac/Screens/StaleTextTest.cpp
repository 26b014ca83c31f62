#include "VornMac/Drawing/QRModules.h"
#include "tests/VornMac/Model/WalkingService.h"
#include "tests/VornMac/Screens/StateTexts.h"
#include "tests/VornMac/Window/WindowFixture.h"
#include "tests/support/service/ServiceAnswers.h"

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

// Whatever happens in whatever order, nothing is shown or spoken that belongs to another state, session or code.
namespace vorn::testing {
namespace {

using namespace std::chrono_literals;

constexpr std::uint64_t usualWalks = 12;
constexpr int actionsPerWalk = 150; // enough for a user to reach the end more than once

/// Random actions of a user, a service and the clock on the real window.
class Walk {
public:
    explicit Walk(std::uint64_t seed) : dice_(seed)
    {
        fix_.model.shortestUpload = 800ms;
        dice_.chance(30) ? fix_.model.launch() : fix_.model.launchSignedIn(dice_.chance(70));
        journal_ = "launch";
        check();
    }

    void run()
    {
        for (int taken = 0; taken < actionsPerWalk && !::testing::Test::HasFailure(); ++taken) {
            act();
            check();
        }
    }

private:
    AppModel& model() { return fix_.model.model(); }

    void act()
    {
        const std::size_t place = dice_.below(10);
        if (place < 5)
            answer();
        else if (place < 6)
            pass();
        else if (place < 8)
            work();
        else
            use();
        fix_.settle();
    }

    void answer()
    {
        auto waiting = service_.unanswered();
        std::erase_if(waiting, [this](std::size_t index) { return fix_.model.http->isCancelled(index); });
        if (waiting.empty()) return use();
        const std::size_t index = waiting.at(dice_.below(waiting.size()));
        const std::string line = service_.lineOf(index);
        if (line.starts_with("PUT") && dice_.chance(60)) return report(index);
        journal_ += "; answers " + line;
        dice_.chance(75) ? service_.answerWell(index) : (void)service_.answer(index);
    }

    void report(std::size_t index)
    {
        const HTTPRequest& part = fix_.model.http->request(index);
        journal_ += "; reports";
        part.onBodyProgress(static_cast<std::int64_t>(dice_.below(static_cast<std::size_t>(part.body->size()) + 1)));
    }

    void work()
    {
        journal_ += "; works";
        dice_.chance(70) ? fix_.model.runAll() : (void)fix_.model.background.run();
    }

    void pass()
    {
        journal_ += "; time";
        fix_.model.advance(dice_.pick<Clock::Duration>({100ms, 1s, 2s, 3s, 5s, 30s, 2min}));
    }

    void use()
    {
        const auto go = [this](Step step) { return [this, step] { model().go(step); }; };
        const auto upload = [this] { model().upload(); };
        const std::vector<std::function<void()>> uses[] = {
            {[this] { model().startLinking(); }},
            {[this] { model().setUnderstandsUpload(true); }, [this] { model().setAgreesToShare(true); },
             [this] { model().acceptConsent(); }},
            {go(Step::find), go(Step::consent)},
            {upload, upload, upload, upload, go(Step::find), go(Step::access)},
            {[this] { pass(); }, [this] { pass(); }, [this] { pass(); }, go(Step::find)},
            {[this] { pass(); }, [this] { pass(); }, go(Step::find)},
        };
        const auto& possible = uses[static_cast<std::size_t>(model().step())];
        journal_ += "; uses step " + std::to_string(static_cast<int>(model().step()));
        if (model().session() && dice_.chance(3))
            model().signOut();
        else
            possible.at(dice_.below(possible.size()))();
    }

    void check()
    {
        fix_.settle();
        SCOPED_TRACE(journal_);
        const Texts now = textsNow(model(), fix_.model.clock.date());
        for (const std::string& text : fix_.words()) expectOfNow(text, now);
        for (const Read& read : fix_.reading()) {
            expectOfNow(read.name, now);
            expectOfNow(read.description, now);
        }
        for (const std::string& text : fix_.announced()) expectOfNow(text, now);
        expectCodeOfNow(now.contains("QR code to link this Mac"));
        seen_.insert(now.begin(), now.end());
    }

    /// Fails if `text` is of another state. Ignores texts that are of no state.
    void expectOfNow(const std::string& text, const Texts& now)
    {
        if (now.contains(text) || isOfUploadNow(text, model())) return;
        const bool isOfUpload = text.ends_with(" left");
        EXPECT_FALSE(isOfUpload || seen_.contains(text) || textsOfAllStates().contains(text)) << text;
    }

    void expectCodeOfNow(bool isExpected)
    {
        QString shown;
        for (auto* item : itemsBelow(fix_.window().contentItem(), [](QQuickItem* one) { return one->isVisible(); })) {
            if (const auto* code = qobject_cast<QRModules*>(item)) shown = code->payload();
        }
        EXPECT_EQ(shown.toStdString(), isExpected ? model().qrPayload().value() : "");
    }

    Dice dice_;
    WindowFixture fix_;
    WalkingService service_{fix_.model, dice_};
    Texts seen_;
    std::string journal_;
};

TEST(Window, ShowsAndSaysNothingOfAnotherStateSessionOrCode)
{
    const char* count = std::getenv("VORN_WALKS");
    const std::uint64_t walks = count != nullptr ? std::stoull(count) : usualWalks;
    for (std::uint64_t seed = 1; seed <= walks && !HasFailure(); ++seed) {
        SCOPED_TRACE("walk " + std::to_string(seed));
        Walk(seed).run();
    }
}

} // namespace
} // namespace vorn::testing
