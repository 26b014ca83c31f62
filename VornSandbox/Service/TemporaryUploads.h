#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <filesystem>

namespace vorn::sandbox {

/// A private folder among the temporary files, removed with the object. Somebody's messages lie in it, so what a killed
/// run left behind is removed by the next one: a lock that the system drops with its process tells the two apart.
class TemporaryUploads {
public:
    TemporaryUploads();
    ~TemporaryUploads();
    TemporaryUploads(TemporaryUploads&&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
    FileDescriptor lock_;
};

} // namespace vorn::sandbox
