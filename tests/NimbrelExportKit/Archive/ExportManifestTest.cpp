#include "NimbrelExportKit/Archive/ExportManifest.h"

#include "tests/support/SystemTools.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono;

const Bundle bundle({{"CFBundleShortVersionString", "2.3.1"}});
const Instant someTime = sys_days(2026y / March / 1) + 9h + 15min;

TEST(ExporterInfo, TakesTheVersionFromTheBundle)
{
    EXPECT_EQ(ExporterInfo::current(bundle).version, "2.3.1");
}

TEST(ExporterInfo, TakesVersionOneWhenTheBundleHasNone)
{
    EXPECT_EQ(ExporterInfo::current(Bundle({})).version, "1.0.0");
    EXPECT_EQ(ExporterInfo::current(Bundle({{"CFBundleVersion", "77"}})).version, "1.0.0");
}

TEST(ExporterInfo, NamesTheSystem)
{
    EXPECT_EQ(ExporterInfo::current(bundle, {14, 5, 0}).os, "macOS 14.5");
    EXPECT_EQ(ExporterInfo::current(bundle, {13, 6, 1}).os, "macOS 13.6.1");
}

TEST(ExporterInfo, DescribesTheRunningSystem)
{
    EXPECT_EQ(ExporterInfo::current(bundle).os, testing::systemTools::osVersion());
}

TEST(ExporterInfo, IsAlwaysVornForMac)
{
    EXPECT_EQ(ExporterInfo::app, "Vorn for Mac");
}

TEST(ExporterInfo, IsComparedByValue)
{
    EXPECT_EQ((ExporterInfo{"1", "macOS 14.0"}), (ExporterInfo{"1", "macOS 14.0"}));
    EXPECT_NE((ExporterInfo{"1", "macOS 14.0"}), (ExporterInfo{"2", "macOS 14.0"}));
    EXPECT_NE((ExporterInfo{"1", "macOS 14.0"}), (ExporterInfo{"1", "macOS 14.1"}));
}

TEST(ExportManifest, DescribesTheExport)
{
    NimbrelExportResult result;
    result.chats = {{1, "g1", "b", {}}, {2, "g2", "a", {}}, {3, "g3", "b", {}}};
    result.messages = MessageList(5);
    result.skipped.add("empty", 4);
    const ExportManifest manifest(result, {"2.3.1", "macOS 14.5"}, someTime);
    EXPECT_EQ(manifest.exportedAt, "2026-03-01T09:15:00Z");
    EXPECT_EQ(manifest.exporter, (ExporterInfo{"2.3.1", "macOS 14.5"}));
    EXPECT_EQ(manifest.agentHandles, (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(manifest.chatCount, 3);
    EXPECT_EQ(manifest.messageCount, 5);
    EXPECT_EQ(manifest.skipped, result.skipped);
}

TEST(ExportManifest, NamesItsFormat)
{
    EXPECT_EQ(ExportManifest::format, "vorn.nimbrel-imessage");
    EXPECT_EQ(ExportManifest::formatVersion, 1);
}

TEST(ExportManifest, WritesItsTimeInWholeSecondsOfUTC)
{
    EXPECT_EQ(ExportManifest({}, {}, someTime + 999ms).exportedAt, "2026-03-01T09:15:00Z");
    EXPECT_EQ(ExportManifest({}, {}, Instant(-1ms)).exportedAt, "1969-12-31T23:59:59Z");
}

TEST(ExportManifest, IsComparedByValue)
{
    NimbrelExportResult other;
    other.skipped.add("empty", 1);
    const ExportManifest manifest({}, {"1", "macOS 14.0"}, someTime);
    EXPECT_EQ(manifest, ExportManifest({}, {"1", "macOS 14.0"}, someTime));
    EXPECT_NE(manifest, ExportManifest({}, {"1", "macOS 14.0"}, someTime + 1s));
    EXPECT_NE(manifest, ExportManifest({}, {"2", "macOS 14.0"}, someTime));
    EXPECT_NE(manifest, ExportManifest(other, {"1", "macOS 14.0"}, someTime));
}

} // namespace
} // namespace vorn
