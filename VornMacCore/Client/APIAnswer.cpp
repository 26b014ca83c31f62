#include "VornMacCore/Client/APIAnswer.h"

#include <utility>

namespace vorn {
namespace {

ErrorBody errorBodyOf(const HTTPResponse& response)
{
    try {
        return fromJSON<ErrorBody>(response.body);
    } catch (const UndecodableJSON&) {
        return {}; // the status says enough
    }
}

} // namespace

APIError refusalOf(const HTTPResponse& response)
{
    if (response.status == 401) return APIError(APIError::SessionExpired{});
    ErrorBody body = errorBodyOf(response);
    return APIError(APIError::HTTP{response.status, std::move(body.text), std::move(body.code)});
}

} // namespace vorn
