#include "tests/VornMacCore/Client/OpenFiles.h"
#include "tests/VornMacCore/Client/UploadFixture.h"
#include "tests/support/log/CapturedLog.h"

#include <cstdio>
#include <future>
#include <thread>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using namespace testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::size_t mebibyte = 1024 * 1024;

/// Ends the upload, which must end as cancelled and close its file.
void expectCancelled(UploadFixture& fix)
{
    fix.finish();
    EXPECT_THROW(fix.result(), Cancelled);
    EXPECT_FALSE(isOpen(fix.file));
}

TEST(UploadCancel, BeforeItBeginsSendsNothing)
{
    UploadFixture fix;
    fix.start();
    fix.cancel();
    fix.finish();
    EXPECT_THAT(fix.requests(), IsEmpty());
    EXPECT_THAT(fix.reports(), IsEmpty());
}

TEST(UploadCancel, WhileTheFileIsHashedSendsNothing)
{
    UploadFixture fix;
    std::filesystem::resize_file(fix.file, std::uintmax_t{1} << 40); // sparse: it would take an hour to hash
    fix.start();
    while (!isOpen(fix.file)) fix.context.runUntilIdle();
    fix.cancel();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), IsEmpty());
}

TEST(UploadCancel, WhileTheFileWaitsToBeHashedSendsNothing)
{
    UploadFixture fix;
    std::promise<void> gate;
    const auto opened = gate.get_future().share();
    for (int thread = 0; thread < 2; ++thread) fix.pool.post([opened] { opened.wait(); });
    fix.start();
    fix.context.runUntilIdle();
    fix.cancel();
    gate.set_value();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), IsEmpty());
}

TEST(UploadCancel, WhileTheSubmissionIsBeingOpenedAbortsNone)
{
    UploadFixture fix;
    fix.server.script(fix.cancels());
    fix.start();
    expectCancelled(fix);
    EXPECT_TRUE(fix.server.waitUntilAllClosed());
    EXPECT_THAT(fix.requests(), ElementsAre(opening));
}

TEST(UploadCancel, WhileTheFileIsOpenedAborts)
{
    UploadFixture fix;
    std::promise<void> gate;
    const auto opened = gate.get_future().share();
    bool answers = false;
    fix.server.script([&](Exchange& exchange) {
        exchange.readWholeBody();
        for (int thread = 0; thread < 2; ++thread) fix.pool.post([opened] { opened.wait(); });
        fix.context.post([&answers] { answers = true; });
        exchange.answer(submissionAnswer(fix.urlsOf(1, 1)));
    });
    fix.aborts();
    fix.start();
    int steps = 0; // after one more, the upload has its answer, and waits for a free thread to open the file
    fix.context.runUntil([&] { return answers && ++steps == 2; });
    fix.cancel();
    gate.set_value();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, aborting));
}

TEST(UploadCancel, WhileAPartIsBeingSentAbortsAndHangsUp)
{
    UploadFixture fix(std::string(8 * mebibyte, 'x'), 8 * mebibyte);
    fix.opens(fix.urlsOf(1, 1));
    fix.server.script(fix.cancels(mebibyte));
    fix.aborts();
    fix.start();
    expectCancelled(fix);
    const auto took = fix.timeToClose();
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
    EXPECT_FALSE(fix.server.requests().at(1).complete);
    RecordProperty("milliseconds", std::to_string(took.count()));
    std::printf("the storage saw the end of the connection after %.1f ms\n", took.count());
    EXPECT_LT(took, 5s); // rules out waiting for the part; not a performance limit
}

TEST(UploadCancel, BeforeTheFirstByteOfAPartHasArrivedAborts)
{
    UploadFixture fix;
    fix.opens(fix.urlsOf(1, 1));
    fix.server.script(fix.cancels());
    fix.aborts();
    fix.start();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
}

TEST(UploadCancel, WhileThePartsAnswerIsAwaitedAborts)
{
    UploadFixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.server.script(fix.cancels(3));
    fix.aborts();
    fix.start();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
}

TEST(UploadCancel, WhileURLsAreAskedForAborts)
{
    UploadFixture fix;
    fix.opens({});
    fix.server.script(fix.cancels());
    fix.aborts();
    fix.start();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, askingForURLs, aborting));
}

TEST(UploadCancel, WhileFreshURLsAreAskedForAborts)
{
    UploadFixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.answersPart(403);
    fix.server.script(fix.cancels());
    fix.aborts();
    fix.start();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), askingForURLs, aborting));
}

TEST(UploadCancel, WhileAPartIsSentToItsFreshURLAborts)
{
    UploadFixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.answersPart(403);
    fix.givesURLs(1, fix.urlsOf(11, 11));
    fix.server.script(fix.cancels(3));
    fix.aborts();
    fix.start();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), askingForURLs, putting(11), aborting));
}

TEST(UploadCancel, BetweenTwoPartsSendsNoOther)
{
    UploadFixture fix("abcd", 2);
    fix.opens(fix.urlsOf(1, 2));
    fix.takesPart();
    fix.aborts();
    const auto own = std::this_thread::get_id();
    fix.onProgress = [&](const UploadProgress& /*progress*/) {
        if (std::this_thread::get_id() == own) fix.cancel(); // the report between the parts
    };
    fix.start();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
}

TEST(UploadCancel, AfterTheLastPartDoesNotComplete)
{
    UploadFixture fix("ab", 2);
    fix.opens(fix.urlsOf(1, 1));
    fix.takesPart();
    fix.aborts();
    const auto own = std::this_thread::get_id();
    fix.onProgress = [&](const UploadProgress& /*progress*/) {
        if (std::this_thread::get_id() == own) fix.cancel();
    };
    fix.start();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
}

TEST(UploadCancel, WhileTheAssetIsCompletedAborts)
{
    UploadFixture fix;
    fix.opens(fix.urlsOf(1, 1));
    fix.takesPart();
    fix.server.script(fix.cancels());
    fix.aborts();
    fix.start();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), completing, aborting));
}

TEST(UploadCancel, DuringTheAbortLetsItEnd)
{
    const CapturedLog log;
    UploadFixture fix;
    fix.opens(fix.urlsOf(1, 1));
    fix.answersPart(500);
    fix.server.script([&fix](Exchange& exchange) {
        fix.cancelAndWait();
        exchange.answer({});
    });
    fix.start();
    fix.finish();
    EXPECT_THROW(fix.result(), Cancelled); // a cancelled upload reports no failure
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(UploadCancel, OnceMoreDuringTheAbortChangesNothing)
{
    UploadFixture fix;
    fix.opens(fix.urlsOf(1, 1));
    fix.server.script(fix.cancels());
    fix.server.script([&fix](Exchange& exchange) {
        fix.cancelAndWait();
        exchange.answer({});
    });
    fix.start();
    expectCancelled(fix);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
}

TEST(UploadCancel, ByShuttingDownWaitsForTheAbort)
{
    UploadFixture fix(std::string(8 * mebibyte, 'x'), 8 * mebibyte);
    fix.opens(fix.urlsOf(1, 1));
    bool shutDown = false;
    fix.server.script([&](Exchange& exchange) {
        exchange.readBody(1);
        fix.context.post([&shutDown] { shutDown = true; });
        exchange.readWholeBody();
        exchange.stayUntilClosed();
    });
    fix.aborts();
    fix.start();
    fix.context.runUntil([&] { return shutDown; });
    fix.context.shutDown();
    EXPECT_EQ(fix.context.runningTasks(), 0U);
    EXPECT_THAT(fix.requests(), ElementsAre(opening, putting(1), aborting));
    EXPECT_FALSE(isOpen(fix.file));
}

TEST(UploadCancel, ReturnsAtOnce)
{
    UploadFixture fix(std::string(8 * mebibyte, 'x'), 8 * mebibyte);
    fix.opens(fix.urlsOf(1, 1));
    fix.server.script([&fix](Exchange& exchange) {
        exchange.readBody(mebibyte);
        const auto took = fix.cancelAndWait().took; // nothing is read meanwhile, so the transfer cannot proceed
        std::printf("cancel() took %.3f ms\n", took.count());
        EXPECT_LT(took, 1s); // rules out waiting for the network; not a performance limit
        exchange.readWholeBody();
    });
    fix.aborts();
    fix.start();
    expectCancelled(fix);
}

TEST(Upload, LeavesNothingOpen)
{
    const std::size_t before = openFiles();
    {
        UploadFixture fix("abcd", 2);
        fix.opens(fix.urlsOf(1, 2));
        fix.takesPart();
        fix.takesPart();
        fix.completes();
        fix.upload();
        EXPECT_FALSE(isOpen(fix.file));
    }
    EXPECT_EQ(openFiles(), before);
    {
        UploadFixture fix("abcd", 2);
        fix.opens(fix.urlsOf(1, 2));
        fix.takesPart();
        fix.answersPart(500);
        fix.aborts();
        fix.uploadFails<UploadError>();
        EXPECT_FALSE(isOpen(fix.file));
    }
    EXPECT_EQ(openFiles(), before);
    {
        UploadFixture fix("abcd", 2);
        fix.opens(fix.urlsOf(1, 2));
        fix.server.script(fix.cancels(1));
        fix.aborts();
        fix.start();
        expectCancelled(fix);
    }
    EXPECT_EQ(openFiles(), before);
}

} // namespace
} // namespace vorn
