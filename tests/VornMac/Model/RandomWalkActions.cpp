#include "tests/VornMac/Model/RandomWalk.h"
#include "tests/support/service/ServiceAnswers.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace vorn::testing {

using namespace std::chrono_literals;

RandomWalk::RandomWalk(std::uint64_t seed) : dice_(seed)
{
    addUserActions();
    addWorldActions();
}

RandomWalk::~RandomWalk()
{
    watch_.reset();
}

void RandomWalk::go(Step step)
{
    if (step == Step::link) lastCodeRequest_.reset(); // a code that the user asks for is requested at once
    fix_.model().go(step);
}

// The actions that screens offer. The link screen also stands for a user who links without having signed out.
void RandomWalk::addUserActions()
{
    const auto on = [this](Step step) { return [this, step] { return fix_.model().step() == step; }; };
    const auto signedIn = [this] { return fix_.model().session().has_value(); };
    const auto going = [this](Step step) { return [this, step] { go(step); }; };
    const auto add = [this](const char* name, std::size_t weight, auto isPossible, auto run) {
        actions_.push_back({name, weight, isPossible, run});
    };
    add("link again", 2, on(Step::link), [this] {
        lastCodeRequest_.reset();
        fix_.model().startLinking();
    });
    add("tick the first box", 6, on(Step::consent), [this] { fix_.model().setUnderstandsUpload(dice_.chance(90)); });
    add("tick the second box", 6, on(Step::consent), [this] { fix_.model().setAgreesToShare(dice_.chance(90)); });
    add("accept", 8, on(Step::consent), [this] { fix_.model().acceptConsent(); });
    add("continue to find", 8, on(Step::access), going(Step::find));
    add("see the access", 4, on(Step::access), [this] { fix_.model().goOnOnceAccessIsSeen(); });
    add("back to consent", 1, signedIn, going(Step::consent));
    add("back to access", 1, signedIn, going(Step::access));
    add("back to find", 3, signedIn, going(Step::find));
    add("back to link", 1, signedIn, going(Step::link));
    add("scan again", 3, on(Step::find), [this] { fix_.model().scan(); });
    add("upload", 20, on(Step::find), [this] { fix_.model().upload(); });
    add("sign out", 1, signedIn, [this] {
        lastCodeRequest_.reset();
        fix_.model().signOut();
    });
}

void RandomWalk::addWorldActions()
{
    const auto always = [] { return true; };
    actions_.push_back({"reply", 60, [this] { return !service_.unanswered().empty(); }, [this] { answerAny(); }});
    actions_.push_back(
        {"report", 5, [this] { return fix_.isWaiting(ModelFixture::puts); }, [this] { reportProgress(); }});
    actions_.push_back(
        {"background", 25, [this] { return fix_.background.waiting() > 0; }, [this] { fix_.background.run(); }});
    actions_.push_back({"time", 20, always, [this] {
                            passTime(dice_.pick<Clock::Duration>(
                                {1ms, 100ms, 999ms, 1s, 1500ms, 2s, 2s, 3s, 5s, 5s, 30s, 2min, 25min}));
                        }});
    actions_.push_back({"access", 2, always, [this] {
                            fix_.setAccess(
                                dice_.pick({FullDiskAccessStatus::granted, FullDiskAccessStatus::granted,
                                            FullDiskAccessStatus::denied, FullDiskAccessStatus::noDatabase}));
                        }});
    actions_.push_back({"Messages", 2, always, [this] { changeMessages(); }});
    actions_.push_back({"other process", 1, always, [this] { changeStore(); }});
}

void RandomWalk::launch()
{
    if (dice_.chance(50)) fix_.defaults.setBoolean("consent.vorn-mac-nimbrel-1.user-bela", true);
    if (dice_.chance(25))
        fix_.launch();
    else
        fix_.launchSignedIn(dice_.chance(75));
    watch_ = std::make_unique<ModelWatch>(fix_.model());
    observe(true);
}

void RandomWalk::act()
{
    std::vector<const Action*> possible;
    for (const auto& action : actions_)
        if (action.isPossible()) possible.insert(possible.end(), action.weight, &action);
    const Action& action = *possible.at(dice_.below(possible.size()));
    journal_.push_back(action.name);
    action.run();
    const bool rests = dice_.chance(80);
    if (rests) fix_.run();
    journal_.back() += fmt::format(" -> {}, {}", textOf(fix_.model().step()), user());
    observe(rests);
}

void RandomWalk::answerAny()
{
    auto candidates = service_.unanswered();
    // Cancelled requests are answered too, now and then.
    if (!dice_.chance(10))
        std::erase_if(candidates, [this](std::size_t index) { return fix_.http->isCancelled(index); });
    if (candidates.empty()) return;
    const auto index = candidates.at(dice_.below(candidates.size()));
    const auto cancelled = fix_.http->isCancelled(index) ? " too late" : "";
    journal_.back() = fmt::format("{}{} ({})", service_.answer(index), cancelled, fix_.http->summary(index));
}

void RandomWalk::reportProgress()
{
    const auto& part = fix_.http->request(fix_.http->waiting(ModelFixture::puts).value());
    part.onBodyProgress(static_cast<std::int64_t>(dice_.below(static_cast<std::size_t>(part.body->size()) + 1)));
}

// Advances from deadline to deadline, so that each request is checked at the moment it is sent.
void RandomWalk::passTime(Clock::Duration duration)
{
    journal_.back() += fmt::format(" {} ms", std::chrono::duration_cast<std::chrono::milliseconds>(duration).count());
    const auto end = fix_.clock.now() + duration;
    fix_.run();
    observe(true);
    const auto next = [this] { return fix_.clock.nextDeadline().value_or(Clock::Duration::max()); };
    while (next() <= end) {
        fix_.advance(next() - fix_.clock.now());
        observeRequests();
    }
    fix_.advance(end - fix_.clock.now());
}

void RandomWalk::changeStore()
{
    fix_.run();
    const int number = static_cast<int>(dice_.below(50));
    switch (dice_.below(3)) {
    case 0: fix_.tokens->save(belasSession(number)); break;
    case 1: fix_.tokens->save(adasSession(number)); break;
    default: fix_.tokens->clear();
    }
    const auto stored = fix_.tokens->load();
    foreignSession_ = isForeign(stored) ? stored : std::nullopt;
    journal_.back() += stored ? " stores " + stored->token : " removes the session";
}

void RandomWalk::changeMessages()
{
    fix_.files.beforeCopy = nullptr;
    fix_.files.afterCopy = nullptr;
    switch (dice_.below(4)) {
    case 0: fix_.files.beforeCopy = RefusingFileManager::refuse(std::errc::operation_not_permitted); break;
    case 1: fix_.files.afterCopy = [](const std::filesystem::path& copy) { writeFile(copy, "torn"); }; break;
    case 2:
        if (FullDiskAccess::probe(fix_.database()) == FullDiskAccessStatus::granted) fix_.messages.message();
        break;
    default: break;
    }
}

std::vector<std::string> RandomWalk::run(int length)
{
    launch();
    for (int taken = 0; taken < length && broken_.empty(); ++taken) act();
    if (broken_.empty()) reachTheEnd();
    if (broken_.empty()) quit();
    return broken_;
}

// Nothing may leave the user stuck.
void RandomWalk::reachTheEnd()
{
    journal_.emplace_back("all is well now");
    fix_.files.beforeCopy = nullptr;
    fix_.files.afterCopy = nullptr;
    fix_.setAccess(FullDiskAccessStatus::granted);
    fix_.runAll();
    observe(true);
    if (!fix_.model().session() || foreignSession_) return;
    go(Step::find);
    const auto isOver = [this] { return fix_.model().step() == Step::done || !fix_.model().session(); };
    for (int round = 0; round < 50 && !isOver(); ++round) {
        fix_.runAll();
        for (const auto index : service_.unanswered()) service_.answerWell(index);
        fix_.runAll();
        if (fix_.model().step() == Step::find) fix_.model().upload();
    }
    observe(true);
    require(isOver(), "the user gets to the end: " + ::testing::PrintToString(ModelState::of(fix_.model())) +
                          ::testing::PrintToString(fix_.http->waiting()));
}

void RandomWalk::quit()
{
    journal_.emplace_back("quit");
    watch_.reset();
    fix_.quit();
    require(fix_.leftovers().empty(), "quitting leaves nothing behind");
    require(fix_.context.runningTasks() == 0, "quitting ends every task");
}

} // namespace vorn::testing
