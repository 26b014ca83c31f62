// Checks the real programs that hold tokens or messages.
#include "tests/support/Program.h"

#include <gmock/gmock.h>

namespace vorn::testing {
namespace {

TEST(PrivateMemory, IsThatOfEveryProgramWithTokensOrMessages)
{
    for (const char* path : {APPLICATION_PROGRAM, EXPORT_PROGRAM, TERMINAL_PROGRAM}) {
        SCOPED_TRACE(path);
        Program program(path, {"--version"}, {{"LD_PRELOAD", TELL_PRIVACY_MODULE}});
        EXPECT_EQ(program.exitCode(), 0);
        EXPECT_EQ(program.errors(), "readable: 0, largest core: 0\n");
    }
    Program other("/bin/true", {}, {{"LD_PRELOAD", TELL_PRIVACY_MODULE}});
    EXPECT_EQ(other.exitCode(), 0);
    EXPECT_THAT(other.errors(), ::testing::StartsWith("readable: 1, ")) << "which is what a program has by itself";
}

} // namespace
} // namespace vorn::testing
