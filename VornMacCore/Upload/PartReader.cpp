#include "VornMacCore/Upload/PartReader.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace vorn {
namespace {

[[noreturn]] void fail(const std::filesystem::path& path)
{
    throw std::filesystem::filesystem_error("cannot read", path, std::error_code(errno, std::generic_category()));
}

} // namespace

PartReader::PartReader(std::filesystem::path path, PartPlan plan)
    : path_(std::move(path)), plan_(plan), file_(openRegularFile(path_))
{
    if (!file_) fail(path_);
}

std::shared_ptr<const ByteBuffer> PartReader::read(std::int64_t part)
{
    const PartPlan::Range range = plan_.range(part);
    buffer_->resize(static_cast<std::size_t>(range.length()));
    std::size_t filled = 0;
    while (filled < buffer_->size()) {
        const ssize_t count = pread(file_.get(), buffer_->data() + filled, buffer_->size() - filled,
                                    static_cast<off_t>(range.begin) + static_cast<off_t>(filled));
        if (count == 0) break;
        if (count > 0) {
            filled += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            fail(path_);
        }
    }
    buffer_->resize(filled);
    return buffer_;
}

} // namespace vorn
