#include "Platform/Base/SystemLog.h"

#include <map>
#include <mutex>
#include <utility>

#include <os/log.h>

namespace vorn {
namespace {

/// One log for each pair. Never released: the system never frees it either.
os_log_t logOf(const std::string& subsystem, const std::string& category)
{
    static std::mutex mutex;
    static auto& logs = *new std::map<std::pair<std::string, std::string>, os_log_t>;
    const std::lock_guard lock(mutex);
    os_log_t& log = logs[{subsystem, category}];
    if (log == nullptr) log = os_log_create(subsystem.c_str(), category.c_str());
    return log;
}

} // namespace

void writeToSystemLog(const std::string& subsystem, const std::string& category, const std::string& line)
{
    // Arguments are private by default and would show as "<private>".
    os_log_error(logOf(subsystem, category), "%{public}s", line.c_str());
}

} // namespace vorn
