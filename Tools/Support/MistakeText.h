#pragma once

#include <string>

namespace vorn {

/// The text for wrong arguments. Threads: any.
inline std::string mistakeText(const std::string& mistake)
{
    return mistake + "\nRun with --help for more information.\n";
}

} // namespace vorn
