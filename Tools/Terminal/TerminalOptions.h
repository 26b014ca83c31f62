#pragma once

#include "VornMac/Composition/ArgumentDefaults.h"

#include <functional>
#include <optional>
#include <string>
#include <variant>

namespace CLI {
class App;
}

namespace vorn {

/// The options of `vorn-terminal`.
struct TerminalOptions {
    enum class Command { share, show, link, status, signOut };
    enum class Background { dark, light };

    Command command = Command::share;
    std::optional<std::string> submission{}; ///< the one whose status is asked for
    std::optional<std::string> search{};     ///< the words that the listed messages must contain
    std::optional<std::string> copy{};       ///< where to save a copy of the archive, instead of listing messages
    bool yes = false;                        ///< answers every question with yes
    bool json = false;                       ///< prints results as JSON
    bool keychain = true;                    ///< the session is read from the keychain and kept there
    std::optional<Background> background{};  ///< of the terminal, for a QR code without colours
    ArgumentDefaults defaults{};
};

/// What to print instead of running a command: the help, the version, or the mistake in the arguments.
struct TerminalOptionsEnd {
    std::string text;
    bool isMistake = false;
};

/// Reads the command line.
std::variant<TerminalOptions, TerminalOptionsEnd> parseTerminalOptions(int argc, const char* const* argv);

/// Calls `read` with all options and their help, which are destroyed when it returns.
void describeTerminalOptions(const std::function<void(const CLI::App&)>& read);

} // namespace vorn
