#pragma once

#include "Platform/Base/FileDescriptor.h"
#include "Platform/Desktop/SystemPresence.h"
#include "Platform/Desktop/linux/MessageBus.h"

#include <cstdint>
#include <string>

namespace vorn {

/// Keeps the computer awake through logind, or through the session manager where there is no logind. Both let it sleep
/// again when the process ends. Threads: the buses'.
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
    FileDescriptor lock_{-1};  ///< logind's; closing it allows sleep again
    std::uint32_t cookie_ = 0; ///< the session manager's; 0 for none
};

} // namespace vorn
