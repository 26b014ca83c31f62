#pragma once

#include "Tools/Terminal/Terminal.h"

#include <cstdio>
#include <stdexcept>
#include <string>

namespace vorn::testing {

/// A terminal that keeps its lines.
class SaidLines {
public:
    explicit SaidLines(Terminal::Traits traits = {}) : terminal(file_, traits, [this] { return window; })
    {
        if (file_ == nullptr) throw std::runtime_error("no temporary file");
    }
    ~SaidLines() { std::fclose(file_); }
    SaidLines(SaidLines&&) = delete;

    /// The lines since the last call.
    std::string take()
    {
        std::fflush(file_);
        std::string text;
        std::fseek(file_, position_, SEEK_SET);
        for (int c = std::getc(file_); c != EOF; c = std::getc(file_)) text += static_cast<char>(c);
        position_ = std::ftell(file_);
        return text;
    }

private:
    std::FILE* file_ = std::tmpfile();
    long position_ = 0;

public:
    Terminal::WindowSize window; ///< if it is a terminal
    Terminal terminal;
};

} // namespace vorn::testing
