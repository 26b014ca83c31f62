#include "tests/support/service/ServiceAnswers.h"

namespace vorn::testing {
namespace {

StoredSession sessionOf(const std::string& userId, const std::string& name, const std::string& tokens)
{
    return {"token-canary-" + tokens, "refresh-canary-" + tokens, userId, name};
}

} // namespace

StoredSession adasSession(int number)
{
    return sessionOf("user-ada", "Ada", std::to_string(number));
}

StoredSession belasSession(int number)
{
    return sessionOf("user-bela", "Béla", "bela-" + std::to_string(number));
}

std::string tokenPairJSON(const StoredSession& session)
{
    return R"({"token":")" + session.token + R"(","refreshToken":")" + session.refreshToken + R"("})";
}

std::string errorJSON(const std::string& message, const std::string& code)
{
    return R"({"message":")" + message + R"(","code":")" + code + R"("})";
}

DeviceLink sampleDeviceLink()
{
    return {"link-1", "secret-canary-1", "vorn://link/qr-canary-1", "2026-03-01T09:15:00Z", 2000};
}

DeviceLinkPoll sampleApprovedPoll()
{
    return {DeviceLinkStatus::approved, DesktopSession{"token-canary-1", "refresh-canary-1", {"user-ada", "Ada"}}};
}

NimbrelState sampleNimbrelState()
{
    const ExportGuideStep step{"open", "Open", "Open it.", "https://example.com/1.png", "https://example.com/help",
                               "Help"};
    return {
        .quest = {.id = "quest-1",
                  .title = "Share your chat",
                  .description = "Earn a reward.",
                  .rewardUsd = 12.5,
                  .status = "available",
                  .rejectionReasonKey = "export_too_small",
                  .availableAt = "2026-03-01T09:15:00Z",
                  .exportGuide = ExportGuide{"nimbrel", "Nimbrel", std::vector{step}, "mac"}},
        .handles = {"+15550102030", "nimbrel-canary@example.com"},
        .maxBytes = 5'000'000'000,
    };
}

SubmissionUpload sampleSubmissionUpload()
{
    return {
        .submissionId = "sub-1",
        .questId = "quest-1",
        .attempt = 2,
        .assets = {{.assetId = "asset-1",
                    .position = 0,
                    .uploadId = "upload-1",
                    .parts = {{1, "https://storage.example.com/1?sig=canary-1"},
                              {2, "https://storage.example.com/2?sig=canary-2"}}}},
        .expiresInSeconds = 3600,
    };
}

PartUrls samplePartUrls()
{
    return {"sub-1", "asset-1", {{3, "https://storage.example.com/3?sig=canary-3"}}, 60};
}

SubmissionStatus sampleSubmissionStatus()
{
    return {"sub-1", "quest-1", "rejected", "wrong_provider", "12.50", 0};
}

} // namespace vorn::testing
