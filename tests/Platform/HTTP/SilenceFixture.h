#pragma once

#include "tests/Platform/HTTP/HandClock.h"
#include "tests/Platform/HTTP/SessionFixture.h"

#include <thread>

namespace vorn::testing {

struct OwnTime {
    HandClock clock;
};

/// A session whose inactivity clock the test advances. Connecting takes real time.
class SilenceFixture : protected OwnTime, public SessionFixture {
protected:
    static constexpr std::chrono::milliseconds limit{1600}; ///< the session then checks about every 100 ms
    static constexpr std::size_t part = 8 * 1024 * 1024;

    SilenceFixture() : SessionFixture(nullptr, clock.options()) { server.discardBodies(); }

    static HTTPRequest limited(HTTPRequest asked)
    {
        asked.inactivityLimit = limit;
        return asked;
    }

    /// For handlers: lets most of the limit pass, and returns once the session has noticed.
    void passTime(Exchange& exchange)
    {
        clock.advance(limit * 6 / 10);
        const int before = clock.looks();
        while (clock.looks() < before + 3) exchange.pause(std::chrono::milliseconds(1));
    }

    // Two servers that never fall silent, and take several times the limit.

    LoopbackServer::Handler sendingSlowly(std::string_view head, int bodySize)
    {
        return [this, head, bodySize](Exchange& exchange) {
            exchange.send(head);
            for (int i = 0; i < bodySize; ++i) passTime(exchange), exchange.send("x");
        };
    }
    /// A body of 32 MiB, of which the system's buffers hold only a part.
    LoopbackServer::Handler readingSlowly()
    {
        return [this](Exchange& exchange) {
            while (exchange.readBody(part / 2) > 0) passTime(exchange);
            exchange.answer({.status = 201});
        };
    }
};

} // namespace vorn::testing
