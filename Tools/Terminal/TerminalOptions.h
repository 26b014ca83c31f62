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

/// What the user asked `vorn-terminal` for.
struct TerminalOptions {
    enum class Command { share, show, link, status, signOut };
    enum class Background { dark, light };

    Command command = Command::share;
    std::optional<std::string> submission{}; ///< whose status is asked for
    std::optional<std::string> search{};     ///< what shown messages hold
    std::optional<std::string> copy{};       ///< the file that a copy of the archive is saved to, instead of showing it
    bool yes = false;                        ///< to every question
    bool json = false;                       ///< results for programs
    bool keychain = true;                    ///< the session is looked for and kept there
    std::optional<Background> background{};  ///< of the terminal, for a QR code without colours
    ArgumentDefaults defaults{};
};

/// The arguments were all about ending at once: `text` is the help, the version, or what is wrong with them.
struct TerminalOptionsEnd {
    std::string text;
    bool isMistake = false;
};

/// Reads the command line.
std::variant<TerminalOptions, TerminalOptionsEnd> parseTerminalOptions(int argc, const char* const* argv);

/// Hands `read` all options with their help. It is gone once `read` returns.
void describeTerminalOptions(const std::function<void(const CLI::App&)>& read);

} // namespace vorn
