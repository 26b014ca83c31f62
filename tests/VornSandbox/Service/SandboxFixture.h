#pragma once

#include "VornSandbox/Service/SandboxService.h"
#include "tests/support/TemporaryFolder.h"

#include <nlohmann/json.hpp>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vorn::testing {

/// The service's answer.
struct Reply {
    int status = 0; ///< 0 without an answer
    nlohmann::json body;
    std::string text;
    std::map<std::string, std::string> headers; ///< names in lower case
};

/// The tokens of a linked Mac.
struct Tokens {
    std::string token;
    std::string refreshToken;
};

/// An opened submission with its part URLs.
struct Upload {
    std::string id;
    std::string assetId;
    std::map<std::int64_t, std::string> urls;
    std::int64_t expiresInSeconds = 0;
};

/// A real service on a free port with a clock that only the test moves, and a client that sends exactly what it is
/// told.
class SandboxFixture {
public:
    using Headers = std::map<std::string, std::string>;

    explicit SandboxFixture(sandbox::ServiceOptions options = {});

    void advance(std::chrono::milliseconds by) { now_ += by.count(); }
    sandbox::Clock clock() const;

    /// Sends a request with these headers; the library adds Host and, unless they are given, Accept and User-Agent.
    Reply send(const std::string& method, const std::string& path, const Headers& headers,
               const std::optional<std::string>& body = {}) const;

    /// A request to the API as the client frames it; `path` goes below /api/v1/.
    Reply api(const std::string& method, const std::string& path, const std::optional<nlohmann::json>& body = {},
              const std::string& token = {}) const;
    /// A POST as the phone's page sends it; `path` goes below /phone/.
    Reply phone(const std::string& path, const nlohmann::json& body = nlohmann::json::object()) const;

    nlohmann::json createLink() const;
    Reply poll(const nlohmann::json& link) const;
    /// Links a Mac through the phone, and returns its tokens.
    Tokens link(const std::string& userId = "usr_1") const;

    Upload open(const std::string& token, const std::string& archive) const;
    Reply put(const std::string& url, const std::string& bytes, const Headers& headers = {}) const;
    /// Puts every part; returns the list to complete with.
    nlohmann::json putAll(const Upload& upload, const std::string& archive) const;
    Reply complete(const std::string& token, const Upload& upload, const nlohmann::json& parts,
                   const std::string& archive) const;
    /// A whole upload; returns its submission's id.
    std::string submit(const std::string& token, const std::string& archive) const;
    Reply submission(const std::string& token, const std::string& id) const;
    nlohmann::json quest(const std::string& token) const;

    /// The lines that were logged.
    std::vector<std::string> log() const;
    const std::string& baseURL() const { return baseURL_; }
    int port() const;
    void stop() { service_.reset(); }

private:
    std::atomic<std::int64_t> now_ = 1'772'356'500'000; ///< 2026-03-01T09:15:00Z in milliseconds
    std::int64_t partSize_;
    mutable std::mutex mutex_; ///< guards the log
    std::vector<std::string> log_;
    std::unique_ptr<sandbox::SandboxService> service_;
    std::string baseURL_; ///< kept apart, because clients may outlive the service
};

/// Options with parts of 1,000 bytes, so that small archives have several.
sandbox::ServiceOptions smallParts();

std::string hexSHA256(const std::string& bytes);

} // namespace vorn::testing
