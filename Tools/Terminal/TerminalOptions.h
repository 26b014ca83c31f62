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
    std::optional<std::string> search{};     ///< the words that shown messages must hold
    std::optional<std::string> copy{};       ///< the file to save a copy of the archive to, instead of showing it
    bool yes = false;                        ///< to every question
    bool json = false;                       ///< results for programs
    bool keychain = true;                    ///< the session is read from the keychain and kept there
    std::optional<Background> background{};  ///< of the terminal, for a QR code without colours
    ArgumentDefaults defaults{};
};

/// The arguments ask for no command. `text` is the help, the version, or the mistake in them.
struct TerminalOptionsEnd {
    std::string text;
    bool isMistake = false;
};

/// Reads the command line.
std::variant<TerminalOptions, TerminalOptionsEnd> parseTerminalOptions(int argc, const char* const* argv);

/// Calls `read` with all options and their help, which are destroyed when it returns.
void describeTerminalOptions(const std::function<void(const CLI::App&)>& read);

} // namespace vorn
