#include "VornMacCore/Wire/WireJSON.h"

#include "VornMacCore/Wire/WireFields.h"

namespace vorn {

template <class Record>
Record fromJSON(std::string_view text)
{
    return decodeJSON<Record>(text);
}

template <class Record>
std::string toJSON(const Record& record)
{
    return encodeJSON(record);
}

template DeviceLink fromJSON(std::string_view);
template DeviceLinkPoll fromJSON(std::string_view);
template TokenPair fromJSON(std::string_view);
template Revoked fromJSON(std::string_view);
template NimbrelState fromJSON(std::string_view);
template SubmissionUpload fromJSON(std::string_view);
template PartUrls fromJSON(std::string_view);
template SubmissionStatus fromJSON(std::string_view);
template ErrorBody fromJSON(std::string_view);
template DeviceSignals fromJSON(std::string_view);

template std::string toJSON(const CreateDeviceLinkRequest&);
template std::string toJSON(const PollDeviceLinkRequest&);
template std::string toJSON(const RefreshRequest&);
template std::string toJSON(const CreateSubmissionRequest&);
template std::string toJSON(const PartUrlsRequest&);
template std::string toJSON(const CompleteAssetRequest&);
template std::string toJSON(const DeviceSignals&);

} // namespace vorn
