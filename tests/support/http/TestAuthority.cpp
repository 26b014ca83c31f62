#include "tests/support/http/TestAuthority.h"

#include "Platform/Base/Owned.h"

#include <stdexcept>

#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

namespace vorn::testing {
namespace {

constexpr std::chrono::seconds day(86400);

void require(bool done, const char* what)
{
    if (!done) throw std::runtime_error(std::string("OpenSSL cannot ") + what);
}

std::shared_ptr<EVP_PKEY> newKey()
{
    return {EVP_EC_gen("P-256"), &EVP_PKEY_free};
}

/// A certificate of `key`, complete except for its issuer and signature.
std::shared_ptr<X509> newCertificate(EVP_PKEY* key, const std::string& name, std::chrono::seconds begins,
                                     std::chrono::seconds ends)
{
    std::shared_ptr<X509> result(X509_new(), &X509_free);
    static long serial = 0; // unique among an authority's certificates
    X509_set_version(result.get(), X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(result.get()), ++serial);
    X509_gmtime_adj(X509_getm_notBefore(result.get()), begins.count());
    X509_gmtime_adj(X509_getm_notAfter(result.get()), ends.count());
    const auto* const text = reinterpret_cast<const unsigned char*>(name.c_str());
    X509_NAME_add_entry_by_txt(X509_get_subject_name(result.get()), "CN", MBSTRING_UTF8, text, -1, -1, 0);
    X509_set_pubkey(result.get(), key);
    return result;
}

void extend(X509* certificate, int kind, const std::string& value)
{
    const std::unique_ptr<X509_EXTENSION, decltype(&X509_EXTENSION_free)> extension(
        X509V3_EXT_conf_nid(nullptr, nullptr, kind, value.c_str()), &X509_EXTENSION_free);
    require(extension && X509_add_ext(certificate, extension.get(), -1) == 1, "extend a certificate");
}

void sign(X509* certificate, X509* issuer, EVP_PKEY* issuersKey)
{
    X509_set_issuer_name(certificate, X509_get_subject_name(issuer));
    require(X509_sign(certificate, issuersKey, EVP_sha256()) > 0, "sign a certificate");
}

bool isAddress(const std::string& host)
{
    return host.find_first_not_of("0123456789.") == std::string::npos;
}

} // namespace

TestAuthority::TestAuthority()
    : key_(newKey()), certificate_(newCertificate(key_.get(), "Authority of a test", -day, day))
{
    extend(certificate_.get(), NID_basic_constraints, "critical,CA:TRUE");
    extend(certificate_.get(), NID_key_usage, "critical,keyCertSign");
    sign(certificate_.get(), certificate_.get(), key_.get());
}

std::string TestAuthority::certificate() const
{
    const Owned<BIO, BIO_free> memory(BIO_new(BIO_s_mem()));
    require(PEM_write_bio_X509(memory.get(), certificate_.get()) == 1, "write a certificate");
    char* text = nullptr;
    const long size = BIO_get_mem_data(memory.get(), &text);
    return {text, static_cast<std::size_t>(size)};
}

ServerIdentity TestAuthority::identityOf(const Subject& subject) const
{
    const auto key = newKey();
    const auto certificate = newCertificate(key.get(), subject.host, subject.begins, subject.ends);
    extend(certificate.get(), NID_subject_alt_name, (isAddress(subject.host) ? "IP:" : "DNS:") + subject.host);
    sign(certificate.get(), certificate_.get(), key_.get());

    ServerIdentity identity(SSL_CTX_new(TLS_server_method()), &SSL_CTX_free);
    require(SSL_CTX_use_certificate(identity.get(), certificate.get()) == 1, "take a certificate");
    require(SSL_CTX_use_PrivateKey(identity.get(), key.get()) == 1, "take a key");
    return identity;
}

} // namespace vorn::testing
