#pragma once

#include <exception>
#include <string>

namespace vorn {

/// An error's texts for the user. A value: equal texts have equal last words.
struct ErrorText {
    std::string text;             ///< while the program runs on, and may try again by itself
    std::string lastWords = text; ///< when the program ends with it
    bool operator==(const ErrorText& other) const noexcept { return text == other.text; }
};

/// The texts of `error` for the user: every sentence about an error is written here. May hold the service's words,
/// unchanged; `what()` is for logs. Threads: any.
ErrorText errorText(const std::exception& error);

/// Follows the problem of a command that has ended.
inline constexpr const char* runAgain = " Run it again.";

/// The text of a command that ends with `error`: if there was no answer at all, with the advice to run it again.
std::string commandText(const std::exception& error);

/// The system's words in `error`, without the paths that the library adds.
std::string systemReason(const std::exception& error);

/// Why the archive could not be written to `path`.
std::string archiveNotWritten(const std::string& path, const std::exception& error);

// Texts for problems that are known without an error.

inline constexpr const char* somethingWrong = "Something went wrong"; ///< a title, or a sentence with its full stop
inline constexpr const char* noMessages = "Messages isn't set up on this Mac.";
inline constexpr const char* unlinked = "Your Mac is no longer linked. Link it again.";
inline constexpr const char* questUnavailable = "Nimbrel export isn't available yet. Check back soon.";
inline constexpr const char* archiveTooLarge = "Your chat is larger than the upload limit.";
/// Replaces words of the service that cannot be read: an empty line would puzzle.
inline constexpr const char* wordlessRefusal = "The server refused and did not say why.";
/// Precedes the words of an error that the program does not expect.
inline constexpr const char* unexpectedProblem = "Vorn ran into a problem: ";

} // namespace vorn
