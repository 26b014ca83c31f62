#pragma once

#include "Platform/Async/BackgroundExecutor.h"
#include "Platform/Base/CancelFlag.h"
#include "Platform/Base/Log.h"
#include "Platform/HTTP/HTTPSession.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Client/HTTPAnswer.h"
#include "VornMacCore/Wire/WireJSON.h"

#include <concepts>
#include <cstddef>
#include <optional>
#include <string>

namespace vorn {

/// A record's name for the log.
template <class Record>
inline constexpr const char* recordName = nullptr;
template <>
inline constexpr auto recordName<DeviceLink> = "DeviceLink";
template <>
inline constexpr auto recordName<DeviceLinkPoll> = "DeviceLinkPoll";
template <>
inline constexpr auto recordName<TokenPair> = "TokenPair";
template <>
inline constexpr auto recordName<Revoked> = "Revoked";
template <>
inline constexpr auto recordName<NimbrelState> = "NimbrelState";
template <>
inline constexpr auto recordName<SubmissionUpload> = "SubmissionUpload";
template <>
inline constexpr auto recordName<PartUrls> = "PartUrls";
template <>
inline constexpr auto recordName<SubmissionStatus> = "SubmissionStatus";

/// The error for an answer other than 2xx.
APIError refusalOf(const HTTPResponse& response);

/// Returns the record in an answer. Throws `APIError`; logs a 2xx answer without such a record.
template <class Record>
Record decode(const HTTPResponse& response, const Log& log)
{
    if (!isSuccess(response.status)) throw refusalOf(response);
    if constexpr (std::same_as<Record, IgnoredBody>) {
        return {};
    } else {
        static_assert(recordName<Record> != nullptr, "a record that is received has a name for the log");
        try {
            return fromJSON<Record>(response.body);
        } catch (const UndecodableJSON&) {
            log.error(std::string("undecodable ") + recordName<Record> + " answer");
            throw APIError(APIError::InvalidResponse{});
        }
    }
}

/// The longest answer, in bytes, that is decoded where the call runs: this takes a few tenths of a millisecond.
inline constexpr std::size_t longestDecodedInPlace = std::size_t{64} * 1024;

/// As `decode`, but decodes a long answer on `background`, which must outlive the call; if null, where the call runs.
template <class Record>
Async<Record> decodeApart(HTTPResponse response, Log log, BackgroundExecutor* background)
{
    if (background == nullptr || response.body.size() <= longestDecodedInPlace) co_return decode<Record>(response, log);
    const auto read = [&](const CancelFlag& /*cancel*/) { return decode<Record>(response, log); };
    co_return co_await onBackground(background, read);
}

} // namespace vorn
