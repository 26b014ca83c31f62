#include "VornMacCore/Client/APIError.h"

#include "Platform/Base/Match.h"

#include <utility>

namespace vorn {
namespace {

constexpr int notFound = 404;

std::string userText(const APIError::Reason& reason)
{
    static const std::string linkAgain = "Your Mac is no longer linked. Link it again.";
    return std::visit(
        Match{
            [](const APIError::HTTP& http) -> std::string {
                // Our words even when the server has some: its own would name a route, not the feature.
                if (http.status == notFound) return "Nimbrel export isn't available yet. Check back soon.";
                return http.message.value_or("The server answered " + std::to_string(http.status) + ".");
            },
            [](APIError::NotSignedIn) { return linkAgain; },
            [](APIError::SessionExpired) { return linkAgain; },
            [](APIError::SessionChanged) -> std::string { return "You signed in again, so this step was stopped."; },
            [](APIError::InvalidResponse) -> std::string { return "The server sent an answer Vorn could not read."; },
        },
        reason);
}

} // namespace

APIError::APIError(Reason reason) : reason_(std::move(reason)), text_(userText(reason_))
{
}

bool APIError::isLaneOff() const noexcept
{
    const auto* const http = std::get_if<HTTP>(&reason_);
    return http != nullptr && http->status == notFound;
}

} // namespace vorn
