#pragma once

#include <string>

namespace vorn {

/// Writes one line to the system's log at error level, as public text. Threads: any.
void writeToSystemLog(const std::string& subsystem, const std::string& category, const std::string& line);

} // namespace vorn
