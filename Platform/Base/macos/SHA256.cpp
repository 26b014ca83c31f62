#include "Platform/Base/SHA256.h"

#include <algorithm>
#include <limits>

#include <CommonCrypto/CommonDigest.h>

namespace vorn {

struct SHA256::Context : CC_SHA256_CTX {};

SHA256::SHA256() : context_(std::make_unique<Context>())
{
    CC_SHA256_Init(context_.get());
}

SHA256::~SHA256() = default;
SHA256::SHA256(SHA256&&) noexcept = default;
SHA256& SHA256::operator=(SHA256&&) noexcept = default;

void SHA256::update(ByteView bytes)
{
    constexpr std::size_t most = std::numeric_limits<CC_LONG>::max(); // 4 GiB less one byte: CC_LONG has 32 bits
    while (!bytes.empty()) {
        const ByteView piece = bytes.first(std::min(bytes.size(), most));
        CC_SHA256_Update(context_.get(), piece.data(), static_cast<CC_LONG>(piece.size()));
        bytes = bytes.subspan(piece.size());
    }
}

SHA256::Digest SHA256::digest()
{
    Digest digest{};
    CC_SHA256_Final(digest.data(), context_.get());
    return digest;
}

} // namespace vorn
