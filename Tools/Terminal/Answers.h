#pragma once

#include "Platform/Async/BackgroundExecutor.h"
#include "Tools/Terminal/Terminal.h"

#include <optional>
#include <string>

namespace vorn {

/// Reads what the user types, line by line. Threads: the context's own.
class Answers {
public:
    /// Reads from the descriptor `input`, which the caller owns. `background` and `terminal` must outlive it.
    Answers(int input, BackgroundExecutor& background, const Terminal& terminal)
        : input_(input), background_(&background), terminal_(&terminal)
    {
    }

    /// Asks `question`, a sentence, and returns whether the answer was yes ("y" or "yes", in any case). The end of the
    /// input counts as no. What was typed at a terminal before the question is discarded; input from a file or another
    /// program is not.
    Async<bool> confirms(std::string question);

private:
    int input_;
    BackgroundExecutor* background_;
    const Terminal* terminal_;
};

} // namespace vorn
