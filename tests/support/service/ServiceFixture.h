#pragma once

#include "Platform/Async/MainContext.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "VornMacCore/Client/VornAPI.h"
#include "tests/support/http/LoopbackServer.h"
#include "tests/support/log/CapturedLog.h"
#include "tests/support/service/ServiceRequest.h"
#include "tests/support/service/Started.h"

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace vorn {

// Prints the errors of a failed comparison. NOLINTNEXTLINE(readability-identifier-naming): GoogleTest's name
void PrintTo(const APIError& error, std::ostream* out);

} // namespace vorn

namespace vorn::testing {

/// A client of a service on this machine, with which Ada is signed in: real requests over real sockets. Threads: the
/// test's own.
class ServiceFixture {
public:
    explicit ServiceFixture(std::optional<StoredSession> session);
    ServiceFixture();
    ~ServiceFixture();
    ServiceFixture(ServiceFixture&&) = delete;

    CapturedLog log;
    LoopbackServer server;
    std::shared_ptr<InMemoryTokenStore> tokens;
    std::shared_ptr<HTTPSession> http = HTTPSession::make();
    MainContext main;
    VornAPI api;

    template <class T>
    T run(Async<T> work)
    {
        return main.run(std::move(work));
    }
    /// The error of `work`; none if it succeeds.
    template <class T>
    std::optional<APIError> apiError(Async<T> work)
    {
        return errorOf<APIError>(main, std::move(work));
    }

    /// The requests that have arrived, in order.
    std::vector<ServiceRequest> requests() const;

    // The expected requests.
    ExpectedRequest get(const std::string& path) const { return {"GET", path, server.port()}; }
    ExpectedRequest post(const std::string& path) const { return {"POST", path, server.port()}; }
    /// The request that exchanges the refresh token of `session` for new tokens.
    ExpectedRequest refresh(const StoredSession& session) const;
    ExpectedRequest logout(const std::string& token) const;
};

/// The configuration for the service behind `server`.
APIConfiguration configurationOf(const LoopbackServer& server);

APIError httpError(int status, std::optional<std::string> message = std::nullopt,
                   std::optional<std::string> code = std::nullopt);

} // namespace vorn::testing
