#include "VornMacCore/Wire/WireDate.h"
#include "VornMacCore/Wire/WireJSON.h"
#include "fuzz/Require.h"

#include <cstdint>
#include <optional>

namespace {

using namespace vorn;

/// The record, if `text` is one. Any exception but `UndecodableJSON` ends the run.
template <class Record>
std::optional<Record> readIfSound(std::string_view text)
{
    try {
        return fromJSON<Record>(text);
    } catch (const UndecodableJSON& error) {
        require(error.what()[0] != '\0', "every refusal says why");
        return std::nullopt;
    }
}

/// Reads `text` as `Record`; white space at its end changes nothing.
template <class Record>
void readAnswer(std::string_view text)
{
    require(readIfSound<Record>(text) == readIfSound<Record>(std::string(text) + "\n"), "white space means nothing");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto link = readIfSound<DeviceLink>(text))
        require(link->expiresAtDate() == WireDate::parse(link->expiresAt), "a link expires at its time stamp");
    readAnswer<DeviceLinkPoll>(text);
    readAnswer<TokenPair>(text);
    readAnswer<Revoked>(text);
    readAnswer<NimbrelState>(text);
    readAnswer<SubmissionUpload>(text);
    readAnswer<PartUrls>(text);
    readAnswer<SubmissionStatus>(text);
    readAnswer<ErrorBody>(text);
    if (const auto signals = readIfSound<DeviceSignals>(text))
        require(fromJSON<DeviceSignals>(toJSON(*signals)) == signals, "what is written reads back as it was");
    return 0;
}
