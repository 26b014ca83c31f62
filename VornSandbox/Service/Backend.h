#pragma once

#include "VornSandbox/Service/ArchiveFolder.h"
#include "VornSandbox/Service/DeviceLinks.h"
#include "VornSandbox/Service/Sessions.h"
#include "VornSandbox/Service/Settings.h"
#include "VornSandbox/Service/StateDatabase.h"
#include "VornSandbox/Service/StateFolder.h"
#include "VornSandbox/Service/Submissions.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

namespace vorn::sandbox {

/// Everything behind the routes, tied together.
struct Backend {
    /// Keeps its state in `path`, which is made if missing; in memory and temporary files when there is none.
    Backend(Settings with, const std::optional<std::filesystem::path>& path, Clock clock,
            Submissions::Inspector inspect)
        : settings(std::move(with)), folder(path ? std::make_unique<StateFolder>(*path) : nullptr),
          files(folder ? std::optional(folder->uploads()) : std::nullopt),
          state(folder ? std::optional(folder->database()) : std::nullopt, std::move(clock)), sessions(state, settings),
          links(state, settings, sessions), submissions(state, settings, files, std::move(inspect))
    {
    }
    Backend(Backend&&) = delete;

    const Settings settings;
    const std::unique_ptr<StateFolder> folder; ///< none when nothing is kept
    ArchiveFolder files;
    StateDatabase state;
    Sessions sessions;
    DeviceLinks links;
    Submissions submissions;
};

} // namespace vorn::sandbox
