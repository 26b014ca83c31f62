#pragma once

#include "Platform/Desktop/linux/MessageBus.h"

#include <optional>
#include <string>

namespace vorn {

/// A bar on the application's icon in docks and task bars that support Unity's "LauncherEntry" interface. Threads: the
/// bus's.
class LauncherProgress {
public:
    /// `session` outlives this object; `identifier` is the desktop file's name, without its extension.
    LauncherProgress(MessageBus& session, const std::string& identifier);

    void show(std::optional<int> percent);

private:
    MessageBus& session_;
    std::string application_;
};

} // namespace vorn
