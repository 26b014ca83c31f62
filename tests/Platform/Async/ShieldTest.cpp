#include "tests/Platform/Async/TaskFixture.h"

#include <stdexcept>

namespace vorn {
namespace {

using ::testing::ElementsAre;

struct Shield : TaskFixture {};

Async<> cleanUpShielded(Gate<>* work, Gate<>* cleanUp, Journal* journal)
{
    bool failed = false;
    try {
        co_await work->wait();
    } catch (const Cancelled&) {
        failed = true;
    }
    if (failed) co_await shielded(waitAndTell(cleanUp, journal));
    journal->emplace_back("never");
}

TEST_F(Shield, LetsCleanUpGoOutAfterACancelAndThenThrows)
{
    Gate<> cleanUp;
    Task task(context, cleanUpShielded(&gate, &cleanUp, &journal));
    context.runUntilIdle();
    task.cancel();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began"));
    cleanUp.answer();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began", "answered"));
    EXPECT_FALSE(task.isRunning());
}

Async<> shieldedTwice(Gate<>* inner, Gate<>* outer, Journal* journal)
{
    co_await shielded(waitAndTell(inner, journal));
    co_await waitAndTell(outer, journal);
}

Async<> shieldedAndNoMore(Async<> work, Journal* journal)
{
    co_await shielded(std::move(work));
    journal->emplace_back("never");
}

TEST_F(Shield, HoldsAfterOneInsideOfItEnded)
{
    Gate<> outer;
    Task task(context, shieldedAndNoMore(shieldedTwice(&gate, &outer, &journal), &journal));
    context.runUntilIdle();
    task.cancel();
    EXPECT_EQ(gate.stops, 0);
    gate.answer();
    context.runUntilIdle();
    outer.answer();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("began", "answered", "began", "answered"));
}

Async<> failAfter(Gate<>* gate, const char* text)
{
    co_await gate->wait();
    throw std::runtime_error(text);
}

Async<> failShielded(Gate<>* gate, Journal* journal)
{
    Gate<> never;
    for (const char* const text : {"first", "second"}) {
        try {
            co_await shielded(failAfter(gate, text));
        } catch (const Cancelled&) {
            journal->emplace_back(text);
        }
    }
    co_await never.wait();
}

TEST_F(Shield, EndsWithItsWorkAlsoWhenThatFails)
{
    Task task(context, failShielded(&gate, &journal));
    context.runUntilIdle();
    task.cancel();
    gate.answer();
    context.runUntilIdle();
    gate.answer();
    context.runUntilIdle();
    EXPECT_THAT(journal, ElementsAre("first", "second"));
    EXPECT_EQ(context.runningTasks(), 0U);
}

} // namespace
} // namespace vorn
