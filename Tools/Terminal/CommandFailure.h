#pragma once

#include <exception>
#include <string>
#include <utility>

namespace vorn {

/// The exit statuses of `vorn-terminal`, by which scripts tell the cases apart.
enum class TerminalStatus {
    done = 0,
    failed = 1, ///< any other problem, such as output that cannot be printed, or a bug
    wrongArguments = 2,
    notLinked = 3,   ///< this Mac is not, or no longer, linked
    notNow = 5,      ///< the quest accepts no upload at the moment
    unreachable = 7, ///< no answer from the service
    refused = 8,     ///< the upload failed, or the service gave an answer that the command cannot use
    notAccepted = 9, ///< the review ended without a reward
    keychain = 10,   ///< the keychain cannot be reached, or does not do what the command needs
    declined = 11,   ///< the user said no
    noAccess = 12,   ///< Messages cannot be read, and the command does not wait for access
    notFound = 13,   ///< there is no conversation to upload
};

/// Ends a command.
class CommandFailure : public std::exception {
public:
    CommandFailure(TerminalStatus status, std::string text) : status_(status), text_(std::move(text)) {}

    TerminalStatus status() const noexcept { return status_; }
    /// For the user, fit for a terminal, without a newline at the end; empty if the user has been told already.
    const std::string& text() const noexcept { return text_; }
    const char* what() const noexcept override { return "a command failed"; }

    bool operator==(const CommandFailure& other) const noexcept
    {
        return status_ == other.status_ && text_ == other.text_;
    }

private:
    TerminalStatus status_;
    std::string text_;
};

/// The failure of a command in which `error` was thrown.
CommandFailure failureOf(const std::exception& error);

/// `text`, from `errorText`, made fit for a terminal; a text of our own if nothing visible is left of it.
std::string spokenWords(const std::string& text);

} // namespace vorn
