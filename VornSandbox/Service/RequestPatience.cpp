#include "VornSandbox/Service/RequestPatience.h"

#include <utility>

namespace vorn::sandbox {

void RequestPatience::requestCame(int remotePort)
{
    const std::lock_guard lock(mutex_);
    waits_[remotePort] = {.since = {}, .isServed = true};
}

void RequestPatience::answerLeft(int remotePort, Time now)
{
    const std::lock_guard lock(mutex_);
    waits_[remotePort] = {.since = now};
}

/// Takes in the connections that are new and forgets those that have gone.
void RequestPatience::look(Time now)
{
    const std::vector<int> ports = connections_.remotePorts();
    if (ports.empty()) return; // also when there was no descriptor left to look with
    std::map<int, Wait> present;
    for (const int port : ports) {
        const auto known = waits_.find(port);
        present.emplace(port, known == waits_.end() ? Wait{.since = now} : known->second);
    }
    waits_ = std::move(present);
}

void RequestPatience::cutLate(Time now)
{
    const std::lock_guard lock(mutex_);
    look(now);
    for (auto& [port, wait] : waits_) {
        if (!wait.isServed && now - wait.since >= limit_) cut(port, wait);
    }
}

void RequestPatience::makeRoom(Time now)
{
    const std::lock_guard lock(mutex_);
    look(now);
    auto longest = waits_.end();
    for (auto entry = waits_.begin(); entry != waits_.end(); ++entry) {
        const Wait& wait = entry->second;
        if (wait.isServed || wait.isCut) continue;
        if (longest == waits_.end() || wait.since < longest->second.since) longest = entry;
    }
    if (longest != waits_.end()) cut(longest->first, longest->second);
}

void RequestPatience::cut(int remotePort, Wait& wait)
{
    if (!std::exchange(wait.isCut, true)) connections_.cut(remotePort);
}

} // namespace vorn::sandbox
