#include "Platform/HTTP/UnreadTLS.h"

#include <openssl/err.h>
#include <openssl/ssl.h>

namespace vorn {
namespace {

constexpr std::size_t enough = 64 * 1024; // refusals are smaller

SSL* sessionOf(CURL* handle)
{
    const curl_tlssessioninfo* info = nullptr;
    if (curl_easy_getinfo(handle, CURLINFO_TLS_SSL_PTR, &info) != CURLE_OK || info == nullptr) return nullptr;
    return info->backend == CURLSSLBACKEND_OPENSSL ? static_cast<SSL*>(info->internals) : nullptr;
}

} // namespace

std::optional<std::string> takeUnreadTLS(CURL* handle, int socket)
{
    SSL* const session = sessionOf(handle);
    if (session == nullptr || SSL_is_init_finished(session) != 1) return std::nullopt;
    // libcurl's own way to the socket works only inside of libcurl's calls. Writing needs another one too: reading ends
    // with an alert to the other side.
    BIO* const direct = BIO_new_socket(socket, BIO_NOCLOSE);
    if (direct == nullptr) return std::nullopt;
    SSL_set_bio(session, direct, direct);

    ERR_clear_error();
    std::string bytes(enough, '\0');
    std::size_t size = 0, count = 0;
    while (size < enough && SSL_read_ex(session, bytes.data() + size, enough - size, &count) == 1) size += count;
    ERR_clear_error();
    bytes.resize(size);
    return bytes;
}

} // namespace vorn
