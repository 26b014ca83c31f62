#include "Tools/Support/ProgressLine.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <memory>

namespace vorn {
namespace {

using namespace std::chrono_literals;

class ProgressLineTest : public ::testing::Test {
protected:
    testing::TemporaryFolder folder;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> terminal{std::fopen((folder / "terminal").c_str(), "w"),
                                                             &std::fclose};
    std::chrono::steady_clock::time_point now{};
    std::unique_ptr<ProgressLine> line = std::make_unique<ProgressLine>(terminal.get(), [this] { return now; });

    std::string shown() const
    {
        std::fflush(terminal.get());
        return testing::readFile(folder / "terminal");
    }
};

TEST_F(ProgressLineTest, ShowsNothingForWorkShorterThanASecond)
{
    now += 999ms;
    line->show("halfway");
    line.reset();
    EXPECT_EQ(shown(), "");
}

TEST_F(ProgressLineTest, ReplacesItsLine)
{
    now += 1s;
    line->show("one");
    now += 100ms;
    line->show("two");
    EXPECT_EQ(shown(), "\r\x1B[Kone\r\x1B[Ktwo");
}

TEST_F(ProgressLineTest, ChangesAtMostTenTimesASecond)
{
    now += 1s;
    line->show("one");
    now += 99ms;
    line->show("too soon");
    EXPECT_EQ(shown(), "\r\x1B[Kone");
}

TEST_F(ProgressLineTest, LeavesNothingBehind)
{
    now += 1s;
    EXPECT_EQ(line->eraser(), "");
    line->show("one");
    EXPECT_EQ(line->eraser(), "\r\x1B[K");
    line->clear();
    EXPECT_EQ(line->eraser(), "");
    line.reset(); // nothing is left to remove
    EXPECT_EQ(shown(), "\r\x1B[Kone\r\x1B[K");
}

TEST(ProgressLine, WithoutATerminalIsSilent)
{
    auto now = std::chrono::steady_clock::time_point();
    ProgressLine line(nullptr, [&now] { return now; });
    now += 2s;
    line.show("unseen");
    EXPECT_EQ(line.eraser(), ""); // nothing was shown, so there is nothing to remove
    line.clear();
}

} // namespace
} // namespace vorn
