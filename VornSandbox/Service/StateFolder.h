#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <filesystem>

namespace vorn::sandbox {

/// The folder that keeps what a run knows for the next one. It is made if missing; whatever is put into it is for this
/// user only (modes 0700 and 0600), but a folder that is there already keeps its own mode. One run at a time works in
/// it.
class StateFolder {
public:
    /// Throws `std::runtime_error`, with a sentence for people, when that is no place to keep anything.
    explicit StateFolder(const std::filesystem::path& folder);

    std::filesystem::path database() const { return folder_ / "state.sqlite"; }
    std::filesystem::path uploads() const { return folder_ / "uploads"; }

private:
    void makePrivate() const;

    std::filesystem::path folder_;
    FileDescriptor lock_{-1};
};

} // namespace vorn::sandbox
