#pragma once

#include <exception>
#include <string>

namespace vorn {

/// An error's texts for the user. A value: equal texts have equal last words.
struct ErrorText {
    std::string text;             ///< while the program keeps running, and may try again by itself
    std::string lastWords = text; ///< for a program that ends with this error
    bool operator==(const ErrorText& other) const noexcept { return text == other.text; }
};

/// The texts of `error` for the user: every sentence about an error is written here. May be the service's own message,
/// unchanged; `what()` is for logs. Threads: any.
ErrorText errorText(const std::exception& error);

/// Follows the problem of a command that has ended.
inline constexpr const char* runAgain = " Run it again.";

/// The text of a command that ends with `error`: if there was no answer at all, with the advice to run it again.
std::string commandText(const std::exception& error);

/// The system's message in `error`, without the paths that the library adds.
std::string systemReason(const std::exception& error);

/// Why the archive could not be written to `path`.
std::string archiveNotWritten(const std::string& path, const std::exception& error);

// Texts for problems that can also be found without an exception.

inline constexpr const char* somethingWrong = "Something went wrong"; ///< a title; with a full stop, a sentence
inline constexpr const char* noMessages = "Messages isn't set up on this Mac.";
inline constexpr const char* unlinked = "Your Mac is no longer linked. Link it again.";
inline constexpr const char* questUnavailable = "Nimbrel export isn't available yet. Check back soon.";
inline constexpr const char* archiveTooLarge = "Your chat is larger than the upload limit.";
/// Replaces a message from the service that is blank once made printable: an empty line would confuse users.
inline constexpr const char* wordlessRefusal = "The server refused and did not say why.";
/// Precedes the message of an unexpected error.
inline constexpr const char* unexpectedProblem = "Vorn ran into a problem: ";

} // namespace vorn
