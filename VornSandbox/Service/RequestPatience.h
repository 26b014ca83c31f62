#pragma once

#include "VornSandbox/Service/Connections.h"

#include <chrono>
#include <map>
#include <mutex>

namespace vorn::sandbox {

/// How long a connection may wait without a whole request. Whoever says half a request, or nothing, would otherwise
/// hold a thread for as long as he likes. Threads: any.
class RequestPatience {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// `connections` must outlive the object.
    RequestPatience(const Connections& connections, std::chrono::milliseconds limit)
        : connections_(connections), limit_(limit)
    {
    }

    /// The head of a request has come from the client at `remotePort`: it may take its time now.
    void requestCame(int remotePort);
    /// It was answered; the next one is waited for.
    void answerLeft(int remotePort, Time now);

    /// Cuts the connections that have waited too long. To be called again and again: what is new is noticed here.
    void cutLate(Time now);
    /// Cuts the one that has waited longest; none when all are being served.
    void makeRoom(Time now);

private:
    struct Wait {
        Time since;
        bool isServed = false;
        bool isCut = false;
    };
    void look(Time now);
    void cut(int remotePort, Wait& wait);

    const Connections& connections_;
    std::chrono::milliseconds limit_;
    std::mutex mutex_; ///< guards `waits_`
    std::map<int, Wait> waits_;
};

} // namespace vorn::sandbox
