#pragma once

#include "Platform/Base/FileDescriptor.h"
#include "Platform/Desktop/SystemPresence.h"
#include "Platform/Desktop/linux/MessageBus.h"

#include <cstdint>
#include <string>

namespace vorn {

/// Keeps the computer awake through logind, or where there is none through the session manager. Both let go by
/// themselves when the process ends. Threads: the buses'.
class SleepInhibitor {
public:
    /// Both buses outlive this object.
    SleepInhibitor(MessageBus& system, MessageBus& session, ApplicationNames names);
    SleepInhibitor(SleepInhibitor&&) = delete;

    void hold(const std::string& reason);
    void release();

private:
    void askLogind(const std::string& reason);
    void askSessionManager(const std::string& reason);

    MessageBus& system_;
    MessageBus& session_;
    const ApplicationNames names_;
    bool isWanted_ = false;
    bool isAsking_ = false;
    FileDescriptor lock_{-1};  ///< logind's; it lets go when this is closed
    std::uint32_t cookie_ = 0; ///< the session manager's; 0 for none
};

} // namespace vorn
