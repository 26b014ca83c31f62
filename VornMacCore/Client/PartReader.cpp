#include "VornMacCore/Client/PartReader.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace vorn {

class PartReader::File {
public:
    explicit File(std::filesystem::path path) : path_(std::move(path)), descriptor_(openRegularFile(path_))
    {
        if (!descriptor_) fail();
    }

    std::int64_t size() const
    {
        struct stat facts{};
        if (fstat(descriptor_.get(), &facts) != 0) fail();
        return facts.st_size;
    }

    std::size_t read(std::int64_t at, std::span<std::byte> into) const
    {
        while (true) {
            const ssize_t count = pread(descriptor_.get(), into.data(), into.size(), static_cast<off_t>(at));
            if (count >= 0) return static_cast<std::size_t>(count);
            if (errno != EINTR) fail();
        }
    }

private:
    [[noreturn]] void fail() const
    {
        throw std::filesystem::filesystem_error("cannot read", path_, std::error_code(errno, std::generic_category()));
    }

    std::filesystem::path path_;
    FileDescriptor descriptor_;
};

class PartReader::Part final : public HTTPBody {
public:
    Part(std::shared_ptr<const File> file, PartPlan::Range range) : file_(std::move(file)), range_(range) {}

    std::int64_t size() const noexcept override { return range_.length(); }
    std::size_t read(std::int64_t at, std::span<std::byte> into) const override
    {
        const auto count = std::min<std::int64_t>(range_.length() - at, std::ssize(into));
        return file_->read(range_.begin + at, into.first(static_cast<std::size_t>(count)));
    }

private:
    std::shared_ptr<const File> file_;
    PartPlan::Range range_;
};

PartReader::PartReader(std::filesystem::path path, PartPlan plan)
    : file_(std::make_shared<const File>(std::move(path))), plan_(plan)
{
}

std::shared_ptr<const HTTPBody> PartReader::read(std::int64_t part) const
{
    PartPlan::Range range = plan_.range(part);
    range.end = std::clamp(file_->size(), range.begin, range.end);
    return std::make_shared<const Part>(file_, range);
}

} // namespace vorn
