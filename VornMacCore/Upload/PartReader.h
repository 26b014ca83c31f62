#pragma once

#include "Platform/Base/Bytes.h"
#include "Platform/Base/FileDescriptor.h"
#include "VornMacCore/Upload/PartPlan.h"

#include <filesystem>
#include <memory>

namespace vorn {

/// Reads a file part by part into one buffer. Threads: one at a time; every call may block.
/// Errors: `std::filesystem::filesystem_error`.
class PartReader {
public:
    PartReader(std::filesystem::path path, PartPlan plan);

    /// The bytes of `part`, fewer if the file has become shorter. They are overwritten by the next call: whoever they
    /// were given to must be done with them.
    std::shared_ptr<const ByteBuffer> read(std::int64_t part);

private:
    std::filesystem::path path_;
    PartPlan plan_;
    FileDescriptor file_;
    std::shared_ptr<ByteBuffer> buffer_ = std::make_shared<ByteBuffer>();
};

} // namespace vorn
