#pragma once

#include "Platform/Base/FileDescriptor.h"
#include "Platform/HTTP/HTTPBody.h"
#include "VornMacCore/Upload/PartPlan.h"

#include <filesystem>
#include <memory>

namespace vorn {

/// A file that is sent part by part, straight from the disk. Errors: `std::filesystem::filesystem_error`.
class PartReader {
public:
    /// Opens the file.
    PartReader(std::filesystem::path path, PartPlan plan);

    /// What is there of `part` now: fewer bytes than planned if the file has become shorter. Reading them may still
    /// fail. The part keeps the file open; when the last one and the reader are gone, it is closed.
    std::shared_ptr<const HTTPBody> read(std::int64_t part) const;

private:
    class File;
    class Part;

    std::shared_ptr<const File> file_;
    PartPlan plan_;
};

} // namespace vorn
