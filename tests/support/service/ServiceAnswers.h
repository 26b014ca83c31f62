#pragma once

#include "VornMacCore/Client/StoredSession.h"
#include "VornMacCore/Wire/WireRecords.h"

#include <string>

namespace vorn::testing {

// Sample records and the documents in which the service would send them. Every secret contains the word "canary", so
// that logging it fails the test.

/// Ada's session with the tokens "token-canary-<number>" and "refresh-canary-<number>".
StoredSession adasSession(int number = 1);
/// Another user's.
StoredSession belasSession(int number = 1);

/// The answer to a refresh: the tokens of `session`.
std::string tokenPairJSON(const StoredSession& session);
std::string errorJSON(const std::string& message, const std::string& code);
inline constexpr const char* revokedJSON = R"({"status":"revoked"})";

// Each record with every field set, and its document.
DeviceLink sampleDeviceLink();
inline constexpr const char* deviceLinkJSON =
    R"({"linkId":"link-1","pollSecret":"secret-canary-1","qrPayload":"vorn://link/qr-canary-1",
        "expiresAt":"2026-03-01T09:15:00Z","pollIntervalMs":2000})";

DeviceLinkPoll sampleApprovedPoll();
inline constexpr const char* approvedPollJSON =
    R"({"status":"approved","session":{"token":"token-canary-1","refreshToken":"refresh-canary-1",
        "user":{"id":"user-ada","displayName":"Ada"}}})";

NimbrelState sampleNimbrelState();
inline constexpr const char* nimbrelStateJSON =
    R"({"quest":{"id":"quest-1","title":"Share your chat","description":"Earn a reward.","rewardUsd":12.5,
        "status":"available","rejectionReasonKey":"export_too_small","availableAt":"2026-03-01T09:15:00Z",
        "exportGuide":{"provider":"nimbrel","providerName":"Nimbrel","uploadFrom":"mac","steps":[
            {"key":"open","title":"Open","body":"Open it.","imageUrl":"https://example.com/1.png",
             "linkUrl":"https://example.com/help","linkLabel":"Help"}]}},
        "handles":["+15550102030","nimbrel-canary@example.com"],"maxBytes":5000000000})";

SubmissionUpload sampleSubmissionUpload();
inline constexpr const char* submissionUploadJSON =
    R"({"submissionId":"sub-1","questId":"quest-1","attempt":2,"expiresInSeconds":3600,"assets":[
        {"assetId":"asset-1","position":0,"uploadId":"upload-1","parts":[
            {"partNumber":1,"url":"https://storage.example.com/1?sig=canary-1"},
            {"partNumber":2,"url":"https://storage.example.com/2?sig=canary-2"}]}]})";

PartUrls samplePartUrls();
inline constexpr const char* partUrlsJSON =
    R"({"submissionId":"sub-1","assetId":"asset-1","expiresInSeconds":60,
        "parts":[{"partNumber":3,"url":"https://storage.example.com/3?sig=canary-3"}]})";

SubmissionStatus sampleSubmissionStatus();
inline constexpr const char* submissionStatusJSON =
    R"({"id":"sub-1","questId":"quest-1","status":"rejected","rejectionReasonKey":"wrong_provider",
        "rewardUsd":"12.50","assetsRemaining":0})";

} // namespace vorn::testing
