#pragma once

#include "Platform/Base/UserDefaults.h"
#include "VornMac/Composition/ArgumentDefaults.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

/// All user defaults that a command line may override, with the values they may have. Threads: any.
namespace vorn::overrides {

// Keys, for "-Key value" on a command line and for the user's settings.
inline constexpr const char* messagesDatabase = "VornMessagesDatabaseOverride"; ///< for developers: their own chat.db
inline constexpr const char* settingsFile = "VornSettingsFile"; ///< only on a command line: settings for this run
inline constexpr const char* appearance = "VornAppearance";
inline constexpr const char* reduceMotion = "VornReduceMotion";
inline constexpr const char* forgetsSession = "VornForgetsSession";

enum class Program { window, terminal };

struct Key {
    const char* name;
    const char* value; ///< a word for the value, for the help
    const char* help;
    bool inTerminal; ///< the terminal program accepts it too
    const char* fit; ///< what the value must be, in words
    bool (*isFit)(const std::string& value);
};

/// Returns the keys that `program` accepts, in the order of its help.
std::vector<Key> keysOf(Program program);

/// Returns the mistake on a command line of `program`, as one line for the user, safe to print on a terminal; absent if
/// there is none. `pairs` are the overrides and `words` the other arguments: a key among these lacks its value. Accepts
/// the system's own keys ("NS…" and "Apple…").
std::optional<std::string> mistakeOnLine(const ArgumentDefaults& pairs, std::span<const std::string> words,
                                         Program program);

/// The same for the values in `defaults`, wherever they were set.
std::optional<std::string> mistakeIn(const UserDefaults& defaults, Program program);

} // namespace vorn::overrides
