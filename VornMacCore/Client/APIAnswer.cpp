#include "VornMacCore/Client/APIAnswer.h"

#include <utility>

namespace vorn {
namespace {

ErrorBody errorBodyOf(const HTTPResponse& response)
{
    try {
        return fromJSON<ErrorBody>(response.body);
    } catch (const UndecodableJSON&) {
        return {}; // the status is enough
    }
}

std::optional<std::string> shortened(std::optional<std::string> words)
{
    if (!words || words->size() <= APIError::longestText) return words;
    std::size_t end = APIError::longestText;
    while ((static_cast<unsigned char>((*words)[end]) & 0xC0U) == 0x80U) --end; // not within a character
    words->resize(end);
    return *words + "…";
}

} // namespace

APIError refusalOf(const HTTPResponse& response)
{
    if (response.status == 401) return APIError(APIError::SessionExpired{});
    ErrorBody body = errorBodyOf(response);
    return APIError(APIError::HTTP{response.status, shortened(std::move(body.text)), shortened(std::move(body.code))});
}

} // namespace vorn
