#include "tests/documents/WireFacts.h"

#include "VornMacCore/Wire/WireFields.h"

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace vorn::testing {
namespace {

using JSON = nlohmann::ordered_json;

/// Add the record types of a record's fields before the record itself.
class Records {
public:
    template <class Record>
    void add(const char* name)
    {
        JSON keys = JSON::object();
        std::apply([&](const auto&... field) { ((keys[std::string(field.key)] = typeOf(field.member)), ...); },
                   jsonFields<Record>);
        all[name] = keys;
        nameOf<Record> = name;
    }

    JSON all = JSON::object();

private:
    template <class Record>
    inline static const char* nameOf = nullptr;

    template <class Record, class Value>
    static std::string typeOf(Value Record::* /*member*/)
    {
        return typeName(static_cast<const Value*>(nullptr));
    }

    static std::string typeName(const std::string* /*type*/) { return "string"; }
    static std::string typeName(const std::int64_t* /*type*/) { return "integer"; }
    static std::string typeName(const double* /*type*/) { return "number"; }
    template <class Value>
    static std::string typeName(const std::optional<Value>* /*type*/)
    {
        return typeName(static_cast<const Value*>(nullptr)) + "?";
    }
    template <class Value>
    static std::string typeName(const std::vector<Value>* /*type*/)
    {
        return typeName(static_cast<const Value*>(nullptr)) + "[]";
    }
    template <class Record>
    static std::string typeName(const Record* /*type*/)
    {
        if constexpr (jsonrecord::ReadFromText<Record>)
            return "string";
        else
            return nameOf<Record>;
    }
};

} // namespace

nlohmann::ordered_json wireRecords()
{
    Records records;
    records.add<CreateDeviceLinkRequest>("CreateDeviceLinkRequest");
    records.add<DeviceLink>("DeviceLink");
    records.add<PollDeviceLinkRequest>("PollDeviceLinkRequest");
    records.add<LinkedUser>("LinkedUser");
    records.add<DesktopSession>("DesktopSession");
    records.add<DeviceLinkPoll>("DeviceLinkPoll");
    records.add<RefreshRequest>("RefreshRequest");
    records.add<TokenPair>("TokenPair");
    records.add<Revoked>("Revoked");
    records.add<ExportGuideStep>("ExportGuideStep");
    records.add<ExportGuide>("ExportGuide");
    records.add<QuestWire>("QuestWire");
    records.add<NimbrelState>("NimbrelState");
    records.add<DeviceSignals>("DeviceSignals");
    records.add<CreateSubmissionRequest>("CreateSubmissionRequest");
    records.add<PresignedPart>("PresignedPart");
    records.add<UploadAsset>("UploadAsset");
    records.add<SubmissionUpload>("SubmissionUpload");
    records.add<PartUrlsRequest>("PartUrlsRequest");
    records.add<PartUrls>("PartUrls");
    records.add<CompletedPart>("CompletedPart");
    records.add<CompleteAssetRequest>("CompleteAssetRequest");
    records.add<SubmissionStatus>("SubmissionStatus");
    records.add<ErrorBody>("ErrorBody");
    return records.all;
}

} // namespace vorn::testing
