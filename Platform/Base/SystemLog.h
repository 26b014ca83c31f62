#pragma once

#include <string>

namespace vorn {

/// Writes one line at error level to the system's own log, readable by everyone who may read that log. Threads: any.
void writeToSystemLog(const std::string& subsystem, const std::string& category, const std::string& line);

} // namespace vorn
