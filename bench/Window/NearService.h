#pragma once

#include "Platform/Async/Clock.h"
#include "Platform/HTTP/HTTPSession.h"

#include <chrono>
#include <string>

namespace vorn::bench {

/// A service in this very process, so that the window is measured and not a network. Answers after 150 ms, for the
/// quest after `questTakes`; never approves a link, and ends a review only with `approves`; takes five seconds for an
/// upload, reporting its progress.
class NearService final : public HTTPSession {
public:
    static constexpr const char* handle = "+15550102030";

    struct Options {
        Clock::Duration questTakes = std::chrono::milliseconds(150);
        bool approves = false; ///< an upload, at the first poll
    };

    /// `clock` outlives this object.
    NearService(Clock& clock, Options options) : clock_(clock), options_(options) {}

    Async<HTTPResponse> send(HTTPRequest request) override;

private:
    Async<HTTPResponse> answer(std::string path);
    std::string answerTo(const std::string& path) const;
    Async<HTTPResponse> take(HTTPRequest part);

    Clock& clock_;
    Options options_;
};

} // namespace vorn::bench
