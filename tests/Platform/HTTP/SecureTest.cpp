#include "Platform/Base/FileDescriptor.h"
#include "tests/Platform/HTTP/SessionFixture.h"

#include <array>
#include <atomic>
#include <chrono>
#include <memory>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>

#include <openssl/ssl.h>
#include <openssl/x509.h>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Optional;
using Code = URLError::Code;

struct Freed {
    void operator()(SSL_CTX* p) const { SSL_CTX_free(p); }
    void operator()(SSL* p) const { SSL_free(p); }
    void operator()(EVP_PKEY* p) const { EVP_PKEY_free(p); }
    void operator()(X509* p) const { X509_free(p); }
};

/// A TLS server for one connection, with a certificate that it has signed itself, for 127.0.0.1.
class SelfSignedServer {
public:
    SelfSignedServer()
    {
        certify();
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(listener_.get(), reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(listener_.get(), 1), 0);
        EXPECT_EQ(getsockname(listener_.get(), reinterpret_cast<sockaddr*>(&address), &size), 0);
        url = "https://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/secret";
        thread_ = std::thread([this] { serveOne(); });
    }
    /// Waits until the client has gone.
    void join() { thread_.join(); }

    std::string url;
    std::atomic<int> bytesReceived = 0; ///< of what the client sends inside of TLS

private:
    void certify()
    {
        const std::unique_ptr<EVP_PKEY, Freed> key(EVP_EC_gen("P-256"));
        const std::unique_ptr<X509, Freed> certificate(X509_new());
        X509_set_version(certificate.get(), 2);
        ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
        X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
        X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 3600);
        X509_NAME* const name = X509_get_subject_name(certificate.get());
        X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("127.0.0.1"), -1,
                                   -1, 0);
        X509_set_issuer_name(certificate.get(), name);
        X509_set_pubkey(certificate.get(), key.get());
        X509_sign(certificate.get(), key.get(), EVP_sha256());
        EXPECT_EQ(SSL_CTX_use_certificate(context_.get(), certificate.get()), 1);
        EXPECT_EQ(SSL_CTX_use_PrivateKey(context_.get(), key.get()), 1);
    }

    void serveOne()
    {
        const FileDescriptor socket(accept(listener_.get(), nullptr, nullptr));
        const std::unique_ptr<SSL, Freed> secure(SSL_new(context_.get()));
        SSL_set_fd(secure.get(), socket.get());
        if (SSL_accept(secure.get()) != 1) return;
        std::array<char, 1024> bytes{};
        for (int count = 1; count > 0;) {
            count = SSL_read(secure.get(), bytes.data(), static_cast<int>(bytes.size()));
            if (count > 0) bytesReceived += count;
        }
    }

    std::unique_ptr<SSL_CTX, Freed> context_{SSL_CTX_new(TLS_server_method())};
    FileDescriptor listener_{socket(AF_INET, SOCK_STREAM, 0)};
    std::thread thread_;
};

class Secure : public SessionFixture {
protected:
    HTTPRequest secret(const std::string& url) const
    {
        auto asked = request(Method::put, url, bodyOf("private"));
        asked.headers = {{"Authorization", "Bearer secret"}};
        return asked;
    }
    std::string secureURL() const { return "https://127.0.0.1:" + std::to_string(server.port()) + "/"; }
};

TEST_F(Secure, TellsNothingToAServerThatNobodyVouchesFor)
{
    SelfSignedServer impostor;
    EXPECT_THAT(failureOf(secret(impostor.url)), Optional(Code::secureConnectionFailed));
    impostor.join();
    EXPECT_EQ(impostor.bytesReceived, 0);
}

TEST_F(Secure, DoesNotSpeakToAServerWithoutEncryption)
{
    server.greet([](Exchange& exchange) {
        exchange.send("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
        exchange.close();
    });
    EXPECT_THAT(failureOf(secret(secureURL())), Optional(Code::secureConnectionFailed));
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(Secure, DoesNotWaitForAHandshakeForEver)
{
    server.greet([](Exchange& exchange) { exchange.stayUntilClosed(); });
    auto asked = secret(secureURL());
    asked.inactivityLimit = 100ms;
    EXPECT_THAT(failureOf(asked), Optional(Code::timedOut));
    EXPECT_TRUE(server.waitUntilAllClosed());
}

} // namespace
} // namespace vorn::testing
