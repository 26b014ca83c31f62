#pragma once

#include "Tools/Terminal/QRCodeText.h"
#include "Tools/Terminal/TerminalOptions.h"

#include <cstdio>
#include <optional>
#include <string>

namespace vorn {

/// Where the program talks to its user: standard error, so that standard output holds results alone.
class Terminal {
public:
    /// What the surroundings say about standard error.
    struct Traits {
        bool isTerminal = false;
        bool colours = false;
        std::optional<TerminalOptions::Background> background{}; ///< as far as the terminal tells
        int columns = 80;
    };

    /// From the terminal itself and `NO_COLOR`, `TERM` and `COLORFGBG`.
    static Traits currentTraits();

    Terminal(std::FILE* file, Traits traits) : file_(file), traits_(traits) {}

    const Traits& traits() const noexcept { return traits_; }

    /// Where a line that changes can be shown; null when this is no terminal.
    std::FILE* forProgress() const noexcept { return traits_.isTerminal ? file_ : nullptr; }

    /// One line, at once. Foreign text in it must have been through `printable`.
    void say(const std::string& line) const;

    /// How a QR code has to be drawn here; `background` is the user's word.
    QRCodeText::Ink ink(std::optional<TerminalOptions::Background> background) const;

private:
    std::FILE* file_;
    Traits traits_;
};

} // namespace vorn
