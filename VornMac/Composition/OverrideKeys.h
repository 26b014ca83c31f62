#pragma once

#include "Platform/Base/UserDefaults.h"
#include "VornMac/Composition/ArgumentDefaults.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

/// All user defaults that a command line may override, with the values they may have. Threads: any.
namespace vorn::overrides {

// Keys, as "-Key value" on a line and as users set them.
inline constexpr const char* messagesDatabase = "VornMessagesDatabaseOverride"; ///< for developers: a chat.db of theirs
inline constexpr const char* settingsFile = "VornSettingsFile"; ///< on a line alone: for runs on settings of their own
inline constexpr const char* appearance = "VornAppearance";
inline constexpr const char* reduceMotion = "VornReduceMotion";
inline constexpr const char* forgetsSession = "VornForgetsSession";

enum class Program { window, terminal };

struct Key {
    const char* name;
    const char* value; ///< a word for the value, for the help
    const char* help;
    bool inTerminal; ///< the terminal's program accepts it too
    const char* fit; ///< what the value must be, in words
    bool (*isFit)(const std::string& value);
};

/// Returns those that `program` accepts, in the order of its help.
std::vector<Key> keysOf(Program program);

/// Returns the mistake on a command line of `program`, as one line for the user and fit for a terminal; absent when
/// there is none. `pairs` are its overrides and `words` the rest: a key at the end has no value. Accepts the system's
/// own keys ("NS…" and "Apple…").
std::optional<std::string> mistakeOnLine(const ArgumentDefaults& pairs, std::span<const std::string> words,
                                         Program program);

/// The same for the values in `defaults`, wherever they were set.
std::optional<std::string> mistakeIn(const UserDefaults& defaults, Program program);

} // namespace vorn::overrides
