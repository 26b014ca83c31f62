#pragma once

#include "VornSandbox/Service/State/ArchiveFolder.h"
#include "VornSandbox/Service/State/DeviceLinks.h"
#include "VornSandbox/Service/State/Sessions.h"
#include "VornSandbox/Service/State/Settings.h"
#include "VornSandbox/Service/State/StateDatabase.h"
#include "VornSandbox/Service/State/Submissions.h"

#include <filesystem>
#include <optional>
#include <utility>

namespace vorn::sandbox {

/// Everything behind the routes, tied together.
struct Backend {
    /// Keeps its state in `folder`, which is made if missing; in memory and temporary files when there is none.
    Backend(Settings with, const std::optional<std::filesystem::path>& folder, Clock clock,
            Submissions::Inspector inspect)
        : settings(std::move(with)), files(folder ? std::optional(*folder / "uploads") : std::nullopt),
          state(folder ? std::optional(*folder / "state.sqlite") : std::nullopt, std::move(clock)),
          sessions(state, settings), links(state, settings, sessions),
          submissions(state, settings, files, std::move(inspect))
    {
    }
    Backend(Backend&&) = delete;

    const Settings settings;
    ArchiveFolder files; ///< first of those with files, for it makes the folder
    StateDatabase state;
    Sessions sessions;
    DeviceLinks links;
    Submissions submissions;
};

} // namespace vorn::sandbox
