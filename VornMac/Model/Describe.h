#pragma once

#include <exception>
#include <string>

namespace vorn {

/// The line that tells the user about any error: the error's own sentence where it was written for users. It may hold
/// words of the service, as they came. Threads: any.
std::string describe(const std::exception& error);

} // namespace vorn
