#include "Platform/Base/SHA256.h"

#include "Platform/Base/Fatal.h"
#include "Platform/Base/FileDescriptor.h"
#include "Platform/Base/Owned.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <fmt/format.h>
#include <openssl/evp.h>

namespace vorn {

struct SHA256::Context {
    Owned<EVP_MD_CTX, EVP_MD_CTX_free> evp{EVP_MD_CTX_new()};
};

SHA256::SHA256() : context_(std::make_unique<Context>())
{
    if (EVP_DigestInit_ex(context_->evp.get(), EVP_sha256(), nullptr) != 1) fatalError("SHA-256 is not available");
}

SHA256::~SHA256() = default;
SHA256::SHA256(SHA256&&) noexcept = default;
SHA256& SHA256::operator=(SHA256&&) noexcept = default;

void SHA256::update(ByteView bytes)
{
    EVP_DigestUpdate(context_->evp.get(), bytes.data(), bytes.size());
}

std::string SHA256::hexDigest()
{
    std::array<unsigned char, 32> digest{};
    EVP_DigestFinal_ex(context_->evp.get(), digest.data(), nullptr);
    std::string text;
    text.reserve(2 * digest.size());
    for (const unsigned char byte : digest) fmt::format_to(std::back_inserter(text), "{:02x}", byte);
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
