#pragma once

#include <string>

namespace vorn {

/// What a program says when its arguments are wrong. Threads: any.
inline std::string mistakeText(const std::string& mistake)
{
    return mistake + "\nRun with --help for more information.\n";
}

} // namespace vorn
