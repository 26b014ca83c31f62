// Where files cannot be locked, nothing is swept, so private files can still be made safely.
#include "NimbrelExportKit/Messages/TemporaryItems.h"

#include "Platform/Base/Bytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/log/CapturedLog.h"

#include <gmock/gmock.h>

#include <unistd.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

TEST(WithoutLocks, MakesItemsAndSweepsNone)
{
    const testing::TemporaryFolder folder;
    const std::string left = "vorn-nimbrel-0F3A41C2-9B7D-4E55-8A10-5C6D7E8F9A0B.zip";
    const std::string own = "vorn-nimbrel-1F3A41C2-9B7D-4E55-8A10-5C6D7E8F9A0B.zip";
    const std::string snapshot = "vorn-messages-2F3A41C2-9B7D-4E55-8A10-5C6D7E8F9A0B";
    testing::writeFile(folder / left, "another process's");
    const testing::CapturedLog log;
    {
        TemporaryItems items(folder.path(), Log("test", "items"));
        items.files().writeAtomically(bytesOf("archive"), folder / own);
        items.files().createPrivateDirectory(folder / snapshot);
    }
    const std::string lock = "vorn-" + std::to_string(geteuid()) + ".lock";
    EXPECT_THAT(folder.names(), ElementsAre(lock, snapshot, left, own));
    EXPECT_THAT(log.lines(), SizeIs(1));
}

} // namespace
} // namespace vorn
