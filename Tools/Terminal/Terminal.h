#pragma once

#include "Tools/Terminal/QRCodeText.h"
#include "Tools/Terminal/TerminalOptions.h"

#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace vorn {

/// Where the program talks to its user: standard error, so that standard output holds results alone.
class Terminal {
public:
    /// What the surroundings say about standard error.
    struct Traits {
        bool isTerminal = false;
        bool colours = false;
        std::optional<TerminalOptions::Background> background{}; ///< as far as the terminal tells
    };
    /// In character cells.
    struct WindowSize {
        int columns = 80;
        int rows = 24;
    };

    /// From the terminal itself and `NO_COLOR`, `TERM` and `COLORFGBG`.
    static Traits currentTraits();

    /// The size that the terminal has right now; 80 by 24 when it does not tell.
    static WindowSize currentWindowSize();

    /// `windowSize` is asked each time: people resize windows.
    Terminal(std::FILE* file, Traits traits, std::function<WindowSize()> windowSize = &currentWindowSize)
        : file_(file), traits_(traits), windowSize_(std::move(windowSize))
    {
    }

    const Traits& traits() const noexcept { return traits_; }

    /// What has to fit at the moment; nothing when this is no terminal.
    std::optional<WindowSize> window() const
    {
        return traits_.isTerminal ? std::optional(windowSize_()) : std::nullopt;
    }

    /// Where a line that changes can be shown; null when this is no terminal.
    std::FILE* forProgress() const noexcept { return traits_.isTerminal ? file_ : nullptr; }

    /// One line, at once. Foreign text in it must have been through `printable`.
    void say(const std::string& line) const;

    /// How a QR code has to be drawn here; `background` is the user's word.
    QRCodeText::Ink ink(std::optional<TerminalOptions::Background> background) const;

private:
    std::FILE* file_;
    Traits traits_;
    std::function<WindowSize()> windowSize_;
};

} // namespace vorn
