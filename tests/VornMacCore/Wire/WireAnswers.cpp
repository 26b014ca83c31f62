#include "tests/VornMacCore/Wire/WireAnswers.h"

#include "VornMacCore/Wire/WireJSON.h"

#include <stdexcept>

namespace vorn::testing {
namespace {

template <class Record>
WireAnswer answer(std::string record, std::string good, std::set<std::string> optional = {})
{
    return {std::move(record), std::move(good), std::move(optional),
            [](std::string_view text) { fromJSON<Record>(text); }};
}

} // namespace

const std::vector<WireAnswer>& wireAnswers()
{
    static const std::vector<WireAnswer> answers = {
        answer<DeviceLink>("DeviceLink", R"({
            "linkId": "link-1", "pollSecret": "secret-1", "qrPayload": "vorn:link-1",
            "expiresAt": "2026-03-01T09:15:00Z", "pollIntervalMs": 2000})"),
        answer<DeviceLinkPoll>("DeviceLinkPoll", R"({
            "status": "approved",
            "session": {"token": "t-1", "refreshToken": "r-1", "user": {"id": "u-1", "displayName": "Zoë"}}})",
                               {"session"}),
        answer<TokenPair>("TokenPair", R"({"token": "t-2", "refreshToken": "r-2"})"),
        answer<Revoked>("Revoked", R"({"status": "revoked"})"),
        answer<NimbrelState>("NimbrelState", R"({
            "quest": {
                "id": "q-1", "title": "Share your chat", "description": "Earn a reward.", "rewardUsd": 12.5,
                "status": "approved", "rejectionReasonKey": "export_too_small", "availableAt": "2026-03-01T09:15:00Z",
                "exportGuide": {
                    "provider": "nimbrel", "providerName": "Nimbrel", "uploadFrom": "mac",
                    "steps": [{"key": "open", "title": "Open", "body": "Open it.", "imageUrl": "https://example.com/1.png",
                               "linkUrl": "https://example.com/help", "linkLabel": "Help"}]}},
            "handles": ["+15550102030", "nimbrel@example.com"],
            "maxBytes": 536870912})",
                             {"quest.title", "quest.description", "quest.rewardUsd", "quest.rejectionReasonKey",
                              "quest.availableAt", "quest.exportGuide", "quest.exportGuide.providerName",
                              "quest.exportGuide.steps", "quest.exportGuide.uploadFrom",
                              "quest.exportGuide.steps.imageUrl", "quest.exportGuide.steps.linkUrl",
                              "quest.exportGuide.steps.linkLabel"}),
        answer<SubmissionUpload>("SubmissionUpload", R"({
            "submissionId": "s-1", "questId": "q-1", "attempt": 1, "expiresInSeconds": 3600,
            "assets": [{"assetId": "a-1", "position": 0, "uploadId": "up-1", "parts": [
                {"partNumber": 1, "url": "https://example.com/1"}, {"partNumber": 2, "url": "https://example.com/2"}]}]})"),
        answer<PartUrls>("PartUrls", R"({
            "submissionId": "s-1", "assetId": "a-1", "expiresInSeconds": 60,
            "parts": [{"partNumber": 3, "url": "https://example.com/3"}]})"),
        answer<SubmissionStatus>("SubmissionStatus", R"({
            "id": "s-1", "questId": "q-1", "status": "approved", "rejectionReasonKey": "wrong_provider",
            "rewardUsd": "12.50", "assetsRemaining": 0})",
                                 {"rejectionReasonKey", "rewardUsd", "assetsRemaining"}),
        answer<ErrorBody>("ErrorBody", R"({"message": "Too many tries.", "code": "rate_limited"})",
                          {"message", "code"}),
        answer<DeviceSignals>("DeviceSignals", R"({"timezone": "Europe/Berlin", "locale": "de-DE"})"),
    };
    return answers;
}

const std::string& goodAnswer(const std::string& record)
{
    for (const WireAnswer& answer : wireAnswers()) {
        if (answer.record == record) return answer.good;
    }
    throw std::invalid_argument(record);
}

} // namespace vorn::testing
