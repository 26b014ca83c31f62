#include "Platform/Base/SHA256.h"

#include "Platform/Base/Fatal.h"
#include "Platform/Base/Owned.h"

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

SHA256::Digest SHA256::digest()
{
    Digest digest{};
    EVP_DigestFinal_ex(context_->evp.get(), digest.data(), nullptr);
    return digest;
}

} // namespace vorn
