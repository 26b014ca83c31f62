#pragma once

#include <cstddef>
#include <exception>
#include <optional>
#include <string>
#include <variant>

namespace vorn {

/// Why the service did not do what was asked. A transfer that brings no answer fails as `URLError` instead.
class APIError : public std::exception {
public:
    /// Bytes kept of the service's own words, for the user and the log: more than a sentence needs, less than would
    /// fill a screen or the log. An ellipsis replaces the rest.
    static constexpr std::size_t longestText = 1000;

    /// An answer other than 2xx and 401, with the service's own words if it has any.
    struct HTTP {
        int status = 0;
        std::optional<std::string> message;
        std::optional<std::string> code;
        bool operator==(const HTTP&) const = default;
    };
    /// There is no session.
    struct NotSignedIn {
        bool operator==(const NotSignedIn&) const = default;
    };
    /// The service no longer accepts the session.
    struct SessionExpired {
        bool operator==(const SessionExpired&) const = default;
    };
    /// Since the work began, the user has signed out, or another session has replaced theirs.
    struct SessionChanged {
        bool operator==(const SessionChanged&) const = default;
    };
    /// The answer is not what the service promises.
    struct InvalidResponse {
        bool operator==(const InvalidResponse&) const = default;
    };
    using Reason = std::variant<HTTP, NotSignedIn, SessionExpired, SessionChanged, InvalidResponse>;

    APIError(Reason reason); // NOLINT(google-explicit-constructor): a reason converts to its error

    const Reason& reason() const noexcept { return reason_; }

    template <class Case>
    bool is() const noexcept
    {
        return std::holds_alternative<Case>(reason_);
    }

    /// Whether the service has switched this feature off: true for status 404 only.
    bool isLaneOff() const noexcept;

    /// For logs, with the service's own words.
    const char* what() const noexcept override { return description_.c_str(); }

    bool operator==(const APIError& other) const noexcept { return reason_ == other.reason_; }

private:
    Reason reason_;
    std::string description_;
};

} // namespace vorn
