#pragma once

#include <chrono>
#include <memory>
#include <string>

struct evp_pkey_st; // OpenSSL's types stay out of our headers
struct ssl_ctx_st;
struct x509_st;

namespace vorn::testing {

/// A server's certificate and its key.
using ServerIdentity = std::shared_ptr<ssl_ctx_st>;

/// Signs certificates, with a key made for this object alone. Only clients that get `certificate` trust it.
class TestAuthority {
public:
    TestAuthority();

    std::string certificate() const; ///< its own, in PEM

    struct Subject {
        std::string host = "127.0.0.1";                 ///< a name, or an IPv4 address
        std::chrono::seconds begins{-3600}, ends{3600}; ///< from now
    };
    ServerIdentity identityOf(const Subject& subject) const;

private:
    std::shared_ptr<evp_pkey_st> key_;
    std::shared_ptr<x509_st> certificate_;
};

} // namespace vorn::testing
