#include "Tools/Terminal/Pager.h"

#include "tests/support/TemporaryFolder.h"

#include <csignal>

#include <gtest/gtest.h>

namespace vorn {
namespace {

using testing::readFile;
using testing::TemporaryFolder;

class PagerTest : public ::testing::Test {
protected:
    PagerTest() { std::signal(SIGPIPE, SIG_IGN); } // as the program does
    std::string file() const { return folder_ / "read"; }

    TemporaryFolder folder_;
};

TEST_F(PagerTest, HandsAllToTheProgramAndWaitsForIt)
{
    const std::string much(200'000, 'x'); // more than a pipe holds
    Pager pager("sleep 0.1; cat >'" + file() + "'");
    EXPECT_TRUE(pager.write("first\n"));
    EXPECT_TRUE(pager.write(much));
    EXPECT_TRUE(pager.finish());
    EXPECT_EQ(readFile(file()), "first\n" + much);
}

TEST_F(PagerTest, IsLeftWithoutAFailure)
{
    Pager pager("head -c 1 >'" + file() + "'");
    const std::string much(200'000, 'x');
    EXPECT_FALSE(pager.write(much));
    EXPECT_FALSE(pager.write("more"));
    EXPECT_TRUE(pager.finish());
    EXPECT_EQ(readFile(file()), "x");
}

TEST_F(PagerTest, FailsWhereThereIsNoSuchProgram)
{
    Pager pager("no-such-program-anywhere 2>/dev/null");
    pager.write("text");
    EXPECT_FALSE(pager.finish());
}

TEST_F(PagerTest, StartsProgramsWithTheSignalsThatTheyExpect)
{
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    Pager pager("kill -TERM $$; echo survived >'" + file() + "'");
    pager.finish();
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_FALSE(std::filesystem::exists(file()));
}

} // namespace
} // namespace vorn
