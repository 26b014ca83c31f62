// scripts/check-workflows on a machine without the linter. Runs in a folder that holds nothing but its files.
#include "tests/support/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::EndsWith;
using testing::Program;

TEST(CheckWorkflows, SaysThatThereIsNoWayToTheLinter)
{
    const testing::TemporaryFolder tree;
    std::filesystem::create_directories(tree / "scripts");
    std::filesystem::copy(SCRIPTS "/workflows", tree / "scripts/workflows", std::filesystem::copy_options::recursive);
    std::filesystem::copy_file(SCRIPTS "/check-workflows", tree / "scripts/check-workflows");
    // Nothing listens on port 1, and earlier downloads are kept elsewhere.
    Program program("/bin/bash", {tree / "scripts/check-workflows", "mistakes.yml"},
                    {{"npm_config_registry", "http://127.0.0.1:1"},
                     {"npm_config_noproxy", "127.0.0.1"},
                     {"npm_config_cache", tree / "cache"}});
    EXPECT_EQ(program.exitCode(), 75); // ctest counts it as skipped
    EXPECT_THAT(program.errors(),
                EndsWith("check-workflows: the linter could not be installed: is there a way to npm's registry?\n"));
}

} // namespace
} // namespace vorn
