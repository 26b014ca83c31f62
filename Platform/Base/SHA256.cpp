#include "Platform/Base/SHA256.h"

#include "Platform/Base/FileDescriptor.h"

#include <cerrno>
#include <iterator>
#include <system_error>
#include <vector>

#include <fmt/format.h>

namespace vorn {

std::string SHA256::hexDigest()
{
    std::string text;
    for (const unsigned char byte : digest()) fmt::format_to(std::back_inserter(text), "{:02x}", byte);
    return text;
}

std::string SHA256::hexDigestOfFile(const std::filesystem::path& path, const CancelFlag* cancel)
{
    const auto fail = [&path] {
        throw std::filesystem::filesystem_error("cannot read", path, std::error_code(errno, std::generic_category()));
    };
    const FileDescriptor file = openRegularFile(path);
    if (!file) fail();
    SHA256 hash;
    std::vector<std::byte> piece(1024 * 1024);
    while (true) {
        if (cancel != nullptr) cancel->check();
        const ssize_t count = read(file.get(), piece.data(), piece.size());
        if (count == 0) return hash.hexDigest();
        if (count > 0) {
            hash.update(ByteView(piece).first(static_cast<std::size_t>(count)));
        } else if (errno != EINTR) {
            fail();
        }
    }
}

} // namespace vorn
