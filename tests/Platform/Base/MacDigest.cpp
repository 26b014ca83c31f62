// Doubles of macOS's digest functions, which use OpenSSL.
#include <cstring>

#include <CommonCrypto/CommonDigest.h>
#include <openssl/evp.h>

namespace {

// The pointer is kept in the caller's context. Only CC_SHA256_Final shows that it is no longer needed, and frees it.
EVP_MD_CTX* workerOf(const CC_SHA256_CTX* context)
{
    EVP_MD_CTX* worker = nullptr;
    std::memcpy(&worker, context->wbuf, sizeof worker);
    return worker;
}

} // namespace

int CC_SHA256_Init(CC_SHA256_CTX* context)
{
    EVP_MD_CTX* worker = EVP_MD_CTX_new();
    std::memcpy(context->wbuf, &worker, sizeof worker);
    return EVP_DigestInit_ex(worker, EVP_sha256(), nullptr);
}

int CC_SHA256_Update(CC_SHA256_CTX* context, const void* data, CC_LONG length)
{
    return EVP_DigestUpdate(workerOf(context), data, length);
}

int CC_SHA256_Final(unsigned char* digest, CC_SHA256_CTX* context)
{
    const int done = EVP_DigestFinal_ex(workerOf(context), digest, nullptr);
    EVP_MD_CTX_free(workerOf(context));
    return done;
}
