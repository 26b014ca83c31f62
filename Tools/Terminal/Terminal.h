#pragma once

#include "Tools/Terminal/QRCodeText.h"
#include "Tools/Terminal/TerminalOptions.h"

#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace vorn {

/// The program's text for its user, on standard error: standard output holds only results.
class Terminal {
public:
    /// What is known about standard error.
    struct Traits {
        bool isTerminal = false;
        bool colours = false;
        std::optional<TerminalOptions::Background> background{}; ///< if the terminal reports it
    };
    /// In character cells.
    struct WindowSize {
        int columns = 80;
        int rows = 24;
    };

    /// Read from the terminal itself and `NO_COLOR`, `TERM` and `COLORFGBG`.
    static Traits currentTraits();

    /// The terminal's current size; 80 by 24 if it reports none.
    static WindowSize currentWindowSize();

    /// `windowSize` is called each time: users resize windows.
    Terminal(std::FILE* file, Traits traits, std::function<WindowSize()> windowSize = &currentWindowSize)
        : file_(file), traits_(traits), windowSize_(std::move(windowSize))
    {
    }

    const Traits& traits() const noexcept { return traits_; }

    /// The window that output must fit; nothing if this is not a terminal.
    std::optional<WindowSize> window() const
    {
        return traits_.isTerminal ? std::optional(windowSize_()) : std::nullopt;
    }

    /// The file for a line that changes; null if this is not a terminal.
    std::FILE* forProgress() const noexcept { return traits_.isTerminal ? file_ : nullptr; }

    /// Prints one line at once. Foreign text in it must have passed through `printable`.
    void say(const std::string& line) const;

    /// How to draw a QR code here; `background` is the user's choice.
    QRCodeText::Ink ink(std::optional<TerminalOptions::Background> background) const;

private:
    std::FILE* file_;
    Traits traits_;
    std::function<WindowSize()> windowSize_;
};

} // namespace vorn
