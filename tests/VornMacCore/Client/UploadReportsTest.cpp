#include "tests/VornMacCore/Client/UploadFixture.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace testing;
using ::testing::Each;

constexpr std::int64_t mebibyte = 1024 * 1024;

bool holds(const std::vector<UploadProgress>& reports, UploadProgress wanted)
{
    return std::find(reports.begin(), reports.end(), wanted) != reports.end();
}

TEST(UploadReports, GrowToTheWholeFileAndEndThere)
{
    constexpr std::int64_t size = 10 * mebibyte + 5;
    UploadFixture fix(std::string(size, 'x'), 4 * mebibyte);
    fix.opens(fix.urlsOf(1, 3));
    for (int part = 1; part <= 3; ++part) fix.takesPart();
    fix.completes();
    fix.upload();
    const auto reports = fix.reports();
    ASSERT_FALSE(reports.empty());
    std::int64_t before = 0;
    for (const UploadProgress& report : reports) {
        EXPECT_EQ(report.totalBytes, size);
        EXPECT_GE(report.bytesSent, before);
        EXPECT_LE(report.bytesSent, size);
        before = report.bytesSent;
    }
    EXPECT_EQ(reports.back(), (UploadProgress{size, size}));
    EXPECT_TRUE(holds(reports, {4 * mebibyte, size}));
    EXPECT_TRUE(holds(reports, {8 * mebibyte, size}));
}

TEST(UploadReports, ComeWhileAPartIsBeingSent)
{
    constexpr std::int64_t size = 8 * mebibyte;
    UploadFixture fix(std::string(size, 'x'), size);
    fix.opens(fix.urlsOf(1, 1));
    std::int64_t reportedEarly = 0;
    fix.server.script([&](Exchange& exchange) {
        exchange.readBody(4 * mebibyte);
        reportedEarly = fix.reports().back().bytesSent;
        exchange.readWholeBody();
        exchange.answer({.headers = {{"ETag", "\"tag\""}}});
    });
    fix.completes();
    fix.upload();
    EXPECT_GT(reportedEarly, 0);
    EXPECT_LE(reportedEarly, size);
    EXPECT_GT(fix.reports().size(), 2U);
}

TEST(UploadReports, CountFromThePartsBegin)
{
    UploadFixture fix("aaaabbbbcc", 4);
    fix.opens(fix.urlsOf(1, 3));
    for (int part = 1; part <= 3; ++part) fix.takesPart();
    fix.completes();
    fix.upload();
    std::vector<std::int64_t> steps;
    for (const UploadProgress& report : fix.reports()) {
        if (steps.empty() || report.bytesSent != steps.back()) steps.push_back(report.bytesSent);
    }
    if (!steps.empty() && steps.front() == 0) steps.erase(steps.begin());
    EXPECT_EQ(steps, (std::vector<std::int64_t>{4, 8, 10}));
}

TEST(UploadReports, OfAnEmptyFileStayAtNothing)
{
    UploadFixture fix("");
    fix.opens(fix.urlsOf(1, 1));
    fix.takesPart();
    fix.completes();
    fix.upload();
    ASSERT_FALSE(fix.reports().empty());
    EXPECT_THAT(fix.reports(), Each(UploadProgress{0, 0}));
    EXPECT_EQ(fix.reports().back().fraction(), 0);
}

TEST(UploadReports, StayWithinTheFileWhenAPartIsSentAgain)
{
    UploadFixture fix("aaaabbbbcc", 4);
    fix.opens(fix.urlsOf(1, 3));
    fix.takesPart();
    fix.answersPart(403);
    fix.givesURLs(2, fix.urlsOf(2, 3));
    fix.takesPart();
    fix.takesPart();
    fix.completes();
    fix.upload();
    for (const UploadProgress& report : fix.reports()) {
        EXPECT_LE(report.bytesSent, 10);
        EXPECT_EQ(report.totalBytes, 10);
    }
    EXPECT_EQ(fix.reports().back(), (UploadProgress{10, 10}));
}

TEST(UploadReports, DoNotSayThatARefusedPartHasArrived)
{
    constexpr std::int64_t size = 8 * mebibyte;
    UploadFixture fix(std::string(size, 'x'), size);
    fix.opens(fix.urlsOf(1, 1));
    fix.server.script([](Exchange& exchange) { // refused before any of it was read
        exchange.answer({.status = 500, .closes = true});
    });
    fix.aborts();
    fix.uploadFails<UploadError>();
    EXPECT_FALSE(holds(fix.reports(), {size, size}));
}

TEST(UploadReports, AreOptional)
{
    UploadFixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.takesPart();
    fix.completes();
    const MultipartUploader uploader(fix.api.value(), fix.session, fix.pool);
    EXPECT_EQ(fix.context.run(uploader.upload(fix.file, {.termsVersion = "2026-01", .device = {}}, nullptr)).id, "s1");
}

TEST(UploadReports, LetGoOfTheCallbackWithTheUpload)
{
    UploadFixture fix("abc");
    fix.opens(fix.urlsOf(1, 1));
    fix.takesPart();
    fix.completes();
    const auto shown = std::make_shared<int>(0);
    {
        const MultipartUploader uploader(fix.api.value(), fix.session, fix.pool);
        const auto show = [shown](const UploadProgress& /*progress*/) {};
        fix.context.run(uploader.upload(fix.file, {.termsVersion = "2026-01", .device = {}}, show));
    }
    fix.api.reset();
    fix.session.reset(); // its thread has ended
    EXPECT_EQ(shown.use_count(), 1);
}

TEST(UploadReports, EndWithTheUpload)
{
    UploadFixture fix(std::string(mebibyte, 'x'), mebibyte);
    fix.opens(fix.urlsOf(1, 1));
    fix.takesPart();
    fix.completes();
    fix.upload();
    const std::size_t atTheEnd = fix.reports().size();
    fix.api.reset();
    fix.session.reset(); // its thread has ended: nothing is left that could report
    EXPECT_EQ(fix.reports().size(), atTheEnd);
}

TEST(UploadReports, EndWithACancelledPart)
{
    UploadFixture fix(std::string(8 * mebibyte, 'x'), 8 * mebibyte);
    fix.opens(fix.urlsOf(1, 1));
    fix.server.script(fix.cancels(mebibyte));
    std::size_t atTheAbort = 0;
    fix.server.script([&](Exchange& exchange) {
        atTheAbort = fix.reports().size();
        exchange.answer({});
    });
    fix.start();
    fix.finish();
    fix.api.reset();
    fix.session.reset();
    EXPECT_EQ(fix.reports().size(), atTheAbort);
}

} // namespace
} // namespace vorn
