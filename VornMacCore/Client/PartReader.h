#pragma once

#include "Platform/Base/FileDescriptor.h"
#include "Platform/HTTP/HTTPBody.h"
#include "VornMacCore/Client/PartPlan.h"

#include <filesystem>
#include <memory>

namespace vorn {

/// A file that is sent part by part, straight from the disk. Errors: `std::filesystem::filesystem_error`.
class PartReader {
public:
    /// Opens the file.
    PartReader(std::filesystem::path path, PartPlan plan);

    /// Returns the bytes of `part` that are in the file now: fewer than planned if the file has shrunk. Reading them
    /// may still fail. A part shares ownership of the open file with the reader.
    std::shared_ptr<const HTTPBody> read(std::int64_t part) const;

private:
    class File;
    class Part;

    std::shared_ptr<const File> file_;
    PartPlan plan_;
};

} // namespace vorn
