#pragma once

#include <exception>
#include <string>

namespace vorn {

/// What an error tells the user. A value: equal texts have equal last words.
struct ErrorText {
    std::string text;             ///< while the program goes on, and may try again by itself
    std::string lastWords = text; ///< when the program ends with it
    bool operator==(const ErrorText& other) const noexcept { return text == other.text; }
};

/// What `error` tells the user: the only place where an error's sentence is written. It may hold words of the service,
/// as they came; `what()` is for logs. Threads: any.
ErrorText errorText(const std::exception& error);

/// After the problem of a command that has ended.
inline constexpr const char* runAgain = " Run it again.";

/// What a command that ends with `error` tells the user: where there was no answer at all, to run it again.
std::string commandText(const std::exception& error);

/// What the system says in `error`, without the paths that the library adds.
std::string systemReason(const std::exception& error);

/// Why the archive could not be written to `path`.
std::string archiveNotWritten(const std::string& path, const std::exception& error);

// What is wrong, for those who know it without an error.

inline constexpr const char* somethingWrong = "Something went wrong"; ///< a title, or a sentence with its stop
inline constexpr const char* noMessages = "Messages isn't set up on this Mac.";
inline constexpr const char* unlinked = "Your Mac is no longer linked. Link it again.";
inline constexpr const char* questUnavailable = "Nimbrel export isn't available yet. Check back soon.";
inline constexpr const char* archiveTooLarge = "Your chat is larger than the upload limit.";
/// Stands in for words of the service that nobody can read, where an empty line would puzzle.
inline constexpr const char* wordlessRefusal = "The server refused and did not say why.";
/// Before what a failure says of itself, when it is one that no program expects.
inline constexpr const char* unexpectedProblem = "Vorn ran into a problem: ";

} // namespace vorn
