#include "Platform/Base/SystemLog.h"

#include <mutex>
#include <set>

#include <syslog.h>

namespace vorn {
namespace {

/// The log's name for this process, never freed: openlog keeps the pointer.
const char* keptIdentity(const std::string& subsystem)
{
    static auto& kept = *new std::set<std::string>; // never destroyed: other destructors may log at exit
    return kept.insert(subsystem).first->c_str();
}

} // namespace

void writeToSystemLog(const std::string& subsystem, const std::string& category, const std::string& line)
{
    static std::mutex mutex; // the identity is the whole process's: it must not change between the two calls
    const std::lock_guard lock(mutex);
    openlog(keptIdentity(subsystem), LOG_PID, LOG_USER);
    syslog(LOG_ERR, "[%s] %s", category.c_str(), line.c_str());
}

} // namespace vorn
