#pragma once

#include "VornMacCore/Wire/JSONErrors.h"
#include "VornMacCore/Wire/WireRecords.h"

#include <string>
#include <string_view>

namespace vorn {

/// Reads a record that is received: `DeviceLink`, `DeviceLinkPoll`, `TokenPair`, `Revoked`, `NimbrelState`,
/// `SubmissionUpload`, `PartUrls`, `SubmissionStatus` or `ErrorBody`; for tests also `DeviceSignals`. Any other type
/// does not link. Throws `UndecodableJSON` if `text` is not such a record; `JSONObject` says what counts as JSON.
/// Threads: any.
template <class Record>
Record fromJSON(std::string_view text);

/// Writes a record that is sent: `CreateDeviceLinkRequest`, `PollDeviceLinkRequest`, `RefreshRequest`,
/// `CreateSubmissionRequest`, `PartUrlsRequest`, `CompleteAssetRequest` or `DeviceSignals`; any other does not link.
/// Compact, keys in the order of the fields. Throws `UnencodableJSON` for ill-formed UTF-8. Threads: any.
template <class Record>
std::string toJSON(const Record& record);

} // namespace vorn
