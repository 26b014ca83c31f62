#include "Platform/Base/Log.h"
#include "tests/support/log/CapturedLog.h"

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

namespace vorn {
namespace {

using namespace std::string_literals;
using testing::CapturedLog;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const Log apiLog("com.example.vorn", "api");

TEST(Log, WritesLinesWithTheirCategory)
{
    const CapturedLog log;
    apiLog.error("logout failed: no network");
    Log("com.example.vorn", "upload").error("");
    EXPECT_THAT(log.lines(), ElementsAre("[api] logout failed: no network", "[upload] "));
}

TEST(Log, KeepsEachLineOneLineOfWellFormedText)
{
    struct Case {
        std::string name, line, written;
    };
    const std::vector<Case> cases = {
        {"line breaks", "a\nb\r\nc", "a\\nb\\r\\nc"},
        {"tabulator", "a\tb", "a\\tb"},
        {"NUL", "a\0b"s, "a\\u{0}b"},
        {"escape of a terminal", "\x1B[2J\x7F", "\\u{1b}[2J\\u{7f}"},
        {"control characters beyond ASCII", "a\u0085\u009Bb", "a\\u{85}\\u{9b}b"},
        {"line and paragraph separators", "a\u2028b\u2029", "a\\u{2028}b\\u{2029}"},
        {"ill-formed bytes", "a\xFFz \xF0\x9F", "a\uFFFDz \uFFFD"},
        {"other scripts", "café 東京 😀", "café 東京 😀"},
    };
    for (const auto& [name, line, written] : cases) {
        SCOPED_TRACE(name);
        const CapturedLog log;
        apiLog.error(line);
        EXPECT_THAT(log.lines(), ElementsAre("[api] " + written));
    }
}

TEST(Log, GivesLinesBackToTheSinkBefore)
{
    const CapturedLog outer;
    {
        const CapturedLog inner;
        apiLog.error("both");
        EXPECT_THAT(inner.lines(), ElementsAre("[api] both"));
    }
    apiLog.error("outer");
    EXPECT_THAT(outer.lines(), ElementsAre("[api] both", "[api] outer"));
}

TEST(Log, TakesLinesFromSeveralThreadsWhileItsSinkChanges)
{
    constexpr std::size_t lines = 200;
    const CapturedLog log;
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 3; ++writer) {
        writers.emplace_back([] {
            for (std::size_t line = 0; line < lines; ++line) apiLog.error("line");
        });
    }
    for (std::size_t change = 0; change < lines; ++change) const CapturedLog passesOn;
    for (std::thread& writer : writers) writer.join();
    EXPECT_EQ(log.lines().size(), 3 * lines);
}

/// Fails, like a full disk.
class FailingSink : public LogSink {
public:
    void write(std::string_view /*subsystem*/, std::string_view /*category*/, std::string_view /*line*/) override
    {
        throw std::runtime_error("no room");
    }
};

TEST(Log, ReportsAFailingSinkWithoutThrowing)
{
    const auto before = setLogSink(std::make_shared<FailingSink>());
    ::testing::internal::CaptureStderr();
    apiLog.error("lost");
    setLogSink(before);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "cannot write to the log: no room\n");
}

TEST(Log, GoesToTheSystemWithoutASink)
{
    const CapturedLog log;
    const auto before = setLogSink(nullptr);
    EXPECT_EQ(currentLogSink(), nullptr);
    apiLog.error("a test of the system's log: 100 %s");
    EXPECT_EQ(setLogSink(before), nullptr);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(CanaryWatch, FailsTheTestThatLogsASecret)
{
    EXPECT_NONFATAL_FAILURE(apiLog.error("token=CaNaRy-1"), "a secret was logged");
    EXPECT_NONFATAL_FAILURE(Log("com.example.vorn", "canary").error("harmless"), "a secret was logged");
    apiLog.error("can ary");
}

TEST(CanaryWatch, StillWatchesWhileATestCaptures)
{
    const CapturedLog log;
    EXPECT_NONFATAL_FAILURE(apiLog.error("canary-token"), "a secret was logged");
    EXPECT_THAT(log.lines(), ElementsAre("[api] canary-token"));
}

TEST(CanaryWatch, SeesLinesOfOtherThreads)
{
    EXPECT_NONFATAL_FAILURE_ON_ALL_THREADS(std::thread([] { apiLog.error("canary"); }).join(), "a secret was logged");
}

} // namespace
} // namespace vorn
