#pragma once

#include "VornMacCore/Wire/JSONRecord.h"
#include "VornMacCore/Wire/WireRecords.h"

#include <string>
#include <tuple>
#include <utility>

namespace vorn {

// The keys of every record of the service, each declared once, for reading and for writing.

template <>
inline constexpr auto jsonTextReader<DeviceLinkStatus> = &deviceLinkStatus;

template <>
inline constexpr auto jsonTextReader<ReviewStatus> = [](std::string word) { return ReviewStatus(std::move(word)); };

template <>
inline constexpr auto jsonFields<CreateDeviceLinkRequest> = std::tuple{
    JSONField{"deviceName", &CreateDeviceLinkRequest::deviceName},
    JSONField{"platform", &CreateDeviceLinkRequest::platform},
    JSONField{"appVersion", &CreateDeviceLinkRequest::appVersion},
    JSONField{"osVersion", &CreateDeviceLinkRequest::osVersion},
};

template <>
inline constexpr auto jsonFields<DeviceLink> = std::tuple{
    JSONField{"linkId", &DeviceLink::linkId},
    JSONField{"pollSecret", &DeviceLink::pollSecret},
    JSONField{"qrPayload", &DeviceLink::qrPayload},
    JSONField{"expiresAt", &DeviceLink::expiresAt},
    JSONField{"pollIntervalMs", &DeviceLink::pollIntervalMs},
};

template <>
inline constexpr auto jsonFields<PollDeviceLinkRequest> = std::tuple{
    JSONField{"linkId", &PollDeviceLinkRequest::linkId},
    JSONField{"pollSecret", &PollDeviceLinkRequest::pollSecret},
};

template <>
inline constexpr auto jsonFields<LinkedUser> = std::tuple{
    JSONField{"id", &LinkedUser::id},
    JSONField{"displayName", &LinkedUser::displayName},
};

template <>
inline constexpr auto jsonFields<DesktopSession> = std::tuple{
    JSONField{"token", &DesktopSession::token},
    JSONField{"refreshToken", &DesktopSession::refreshToken},
    JSONField{"user", &DesktopSession::user},
};

template <>
inline constexpr auto jsonFields<DeviceLinkPoll> = std::tuple{
    JSONField{"status", &DeviceLinkPoll::status},
    JSONField{"session", &DeviceLinkPoll::session},
};

template <>
inline constexpr auto jsonFields<RefreshRequest> = std::tuple{
    JSONField{"refreshToken", &RefreshRequest::refreshToken},
};

template <>
inline constexpr auto jsonFields<TokenPair> = std::tuple{
    JSONField{"token", &TokenPair::token},
    JSONField{"refreshToken", &TokenPair::refreshToken},
};

template <>
inline constexpr auto jsonFields<Revoked> = std::tuple{
    JSONField{"status", &Revoked::status},
};

template <>
inline constexpr auto jsonFields<ExportGuideStep> = std::tuple{
    JSONField{"key", &ExportGuideStep::key},         JSONField{"title", &ExportGuideStep::title},
    JSONField{"body", &ExportGuideStep::body},       JSONField{"imageUrl", &ExportGuideStep::imageUrl},
    JSONField{"linkUrl", &ExportGuideStep::linkUrl}, JSONField{"linkLabel", &ExportGuideStep::linkLabel},
};

template <>
inline constexpr auto jsonFields<ExportGuide> = std::tuple{
    JSONField{"provider", &ExportGuide::provider},
    JSONField{"providerName", &ExportGuide::providerName},
    JSONField{"steps", &ExportGuide::steps},
    JSONField{"uploadFrom", &ExportGuide::uploadFrom},
};

template <>
inline constexpr auto jsonFields<QuestWire> = std::tuple{
    JSONField{"id", &QuestWire::id},
    JSONField{"title", &QuestWire::title},
    JSONField{"description", &QuestWire::description},
    JSONField{"rewardUsd", &QuestWire::rewardUsd},
    JSONField{"status", &QuestWire::status},
    JSONField{"rejectionReasonKey", &QuestWire::rejectionReasonKey},
    JSONField{"availableAt", &QuestWire::availableAt},
    JSONField{"exportGuide", &QuestWire::exportGuide},
};

template <>
inline constexpr auto jsonFields<NimbrelState> = std::tuple{
    JSONField{"quest", &NimbrelState::quest},
    JSONField{"handles", &NimbrelState::handles},
    JSONField{"maxBytes", &NimbrelState::maxBytes},
};

template <>
inline constexpr auto jsonFields<DeviceSignals> = std::tuple{
    JSONField{"timezone", &DeviceSignals::timezone},
    JSONField{"locale", &DeviceSignals::locale},
};

template <>
inline constexpr auto jsonFields<CreateSubmissionRequest> = std::tuple{
    JSONField{"termsVersion", &CreateSubmissionRequest::termsVersion},
    JSONField{"sizeBytes", &CreateSubmissionRequest::sizeBytes},
    JSONField{"partCount", &CreateSubmissionRequest::partCount},
    JSONField{"device", &CreateSubmissionRequest::device},
};

template <>
inline constexpr auto jsonFields<PresignedPart> = std::tuple{
    JSONField{"partNumber", &PresignedPart::partNumber},
    JSONField{"url", &PresignedPart::url},
};

template <>
inline constexpr auto jsonFields<UploadAsset> = std::tuple{
    JSONField{"assetId", &UploadAsset::assetId},
    JSONField{"position", &UploadAsset::position},
    JSONField{"uploadId", &UploadAsset::uploadId},
    JSONField{"parts", &UploadAsset::parts},
};

template <>
inline constexpr auto jsonFields<SubmissionUpload> = std::tuple{
    JSONField{"submissionId", &SubmissionUpload::submissionId},
    JSONField{"questId", &SubmissionUpload::questId},
    JSONField{"attempt", &SubmissionUpload::attempt},
    JSONField{"assets", &SubmissionUpload::assets},
    JSONField{"expiresInSeconds", &SubmissionUpload::expiresInSeconds},
};

template <>
inline constexpr auto jsonFields<PartUrlsRequest> = std::tuple{
    JSONField{"fromPart", &PartUrlsRequest::fromPart},
    JSONField{"count", &PartUrlsRequest::count},
};

template <>
inline constexpr auto jsonFields<PartUrls> = std::tuple{
    JSONField{"submissionId", &PartUrls::submissionId},
    JSONField{"assetId", &PartUrls::assetId},
    JSONField{"parts", &PartUrls::parts},
    JSONField{"expiresInSeconds", &PartUrls::expiresInSeconds},
};

template <>
inline constexpr auto jsonFields<CompletedPart> = std::tuple{
    JSONField{"partNumber", &CompletedPart::partNumber},
    JSONField{"etag", &CompletedPart::etag},
};

template <>
inline constexpr auto jsonFields<CompleteAssetRequest> = std::tuple{
    JSONField{"parts", &CompleteAssetRequest::parts},
    JSONField{"sha256", &CompleteAssetRequest::sha256},
};

template <>
inline constexpr auto jsonFields<SubmissionStatus> = std::tuple{
    JSONField{"id", &SubmissionStatus::id},
    JSONField{"questId", &SubmissionStatus::questId},
    JSONField{"status", &SubmissionStatus::status},
    JSONField{"rejectionReasonKey", &SubmissionStatus::rejectionReasonKey},
    JSONField{"rewardUsd", &SubmissionStatus::rewardUsd},
    JSONField{"assetsRemaining", &SubmissionStatus::assetsRemaining},
};

template <>
inline constexpr auto jsonFields<ErrorBody> = std::tuple{
    JSONField{"message", &ErrorBody::text},
    JSONField{"code", &ErrorBody::code},
};

} // namespace vorn
