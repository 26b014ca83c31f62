#pragma once

#include "Platform/SQLite/SQLiteError.h"

#include <exception>
#include <string>
#include <variant>

namespace vorn {

/// Why an export could not be made.
class NimbrelExportError : public std::exception {
public:
    /// A failure of SQLite other than damage.
    struct Database {
        SQLiteError error;
        bool operator==(const Database&) const = default;
    };
    /// There is no Messages database.
    struct NoDatabase {
        bool operator==(const NoDatabase&) const = default;
    };
    /// There is one, but this process may not read it.
    struct AccessDenied {
        bool operator==(const AccessDenied&) const = default;
    };
    /// Every copy taken was damaged: Messages was writing meanwhile.
    struct SnapshotUnreadable {
        bool operator==(const SnapshotUnreadable&) const = default;
    };
    using Reason = std::variant<Database, NoDatabase, AccessDenied, SnapshotUnreadable>;

    NimbrelExportError(Reason reason); // NOLINT(google-explicit-constructor): a reason converts to its error

    const Reason& reason() const noexcept { return reason_; }

    template <class Case>
    bool is() const noexcept
    {
        return std::holds_alternative<Case>(reason_);
    }

    /// For logs.
    const char* what() const noexcept override { return description_.c_str(); }

    bool operator==(const NimbrelExportError& other) const noexcept { return reason_ == other.reason_; }

private:
    Reason reason_;
    std::string description_;
};

} // namespace vorn
