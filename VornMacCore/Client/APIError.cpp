#include "VornMacCore/Client/APIError.h"

#include "Platform/Base/Match.h"

#include <utility>

namespace vorn {
namespace {

constexpr int notFound = 404;

std::string describe(const APIError::Reason& reason)
{
    const Match description{
        [](const APIError::HTTP& http) {
            return "HTTP " + std::to_string(http.status) + (http.message ? ": " + *http.message : "");
        },
        [](APIError::NotSignedIn) -> std::string { return "no session"; },
        [](APIError::SessionExpired) -> std::string { return "session not accepted"; },
        [](APIError::SessionChanged) -> std::string { return "session of another user"; },
        [](APIError::InvalidResponse) -> std::string { return "unreadable answer"; },
    };
    return std::visit(description, reason);
}

} // namespace

APIError::APIError(Reason reason) : reason_(std::move(reason)), description_(describe(reason_))
{
}

bool APIError::isLaneOff() const noexcept
{
    const auto* const http = std::get_if<HTTP>(&reason_);
    return http != nullptr && http->status == notFound;
}

} // namespace vorn
