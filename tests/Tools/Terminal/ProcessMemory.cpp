#include "tests/Tools/Terminal/ProcessMemory.h"

#include "Platform/Base/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <sstream>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace vorn::testing {
namespace {

struct Region {
    std::uintptr_t begin = 0, end = 0;
};

/// The regions that may hold copies: nothing can have been written to the others.
std::vector<Region> writableRegions()
{
    std::vector<Region> regions;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        std::istringstream words(line);
        Region region;
        char dash = 0;
        std::string rights;
        words >> std::hex >> region.begin >> dash >> region.end >> rights;
        if (rights.starts_with("rw")) regions.push_back(region);
    }
    return regions;
}

/// A buffer for the bytes to search, in pages of its own, which the search skips.
class Window {
public:
    static constexpr std::size_t size = std::size_t{1} << 20;

    Window()
        : bytes_(static_cast<char*>(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)))
    {
        if (bytes_ == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "mmap");
    }
    ~Window() { munmap(bytes_, size); }
    Window(Window&&) = delete;

    char* bytes() const noexcept { return bytes_; }
    /// Whether it overlaps the range: the system may list adjacent mappings as one region.
    bool isIn(std::uintptr_t begin, std::uintptr_t end) const noexcept
    {
        const auto own = reinterpret_cast<std::uintptr_t>(bytes_);
        return begin < own + size && own < end;
    }

private:
    char* bytes_;
};

std::size_t copiesIn(const char* bytes, std::size_t count, const HiddenText& text)
{
    std::size_t copies = 0;
    const char* const end = bytes + count;
    while (const char* const found =
               static_cast<const char*>(std::memchr(bytes, text.at(0), static_cast<std::size_t>(end - bytes)))) {
        std::size_t same = 1;
        while (same < text.size() && found + same < end && found[same] == text.at(same)) ++same;
        if (same == text.size()) ++copies;
        bytes = found + 1;
    }
    return copies;
}

} // namespace

HiddenText::HiddenText(const std::string& text)
{
    for (const char letter : text) hidden_ += static_cast<char>(letter ^ mask);
}

std::size_t copiesInMemory(const HiddenText& text)
{
    const Window window;
    const FileDescriptor memory(open("/proc/self/mem", O_RDONLY | O_CLOEXEC));
    std::size_t copies = 0;
    for (const Region& region : writableRegions()) {
        std::uintptr_t at = region.begin;
        while (at < region.end) {
            const std::uintptr_t end = std::min<std::uintptr_t>(region.end, at + Window::size);
            const bool isOwn = window.isIn(at, end);
            const ssize_t count = isOwn ? 0 : pread(memory.get(), window.bytes(), end - at, static_cast<off_t>(at));
            if (count > 0) copies += copiesIn(window.bytes(), static_cast<std::size_t>(count), text);
            // A copy across the edge of two windows is found in the second.
            at = end == region.end || isOwn ? end : end - text.size() + 1;
        }
    }
    return copies;
}

} // namespace vorn::testing
