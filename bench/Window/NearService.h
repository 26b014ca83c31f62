#pragma once

#include "Platform/Async/Clock.h"
#include "Platform/HTTP/HTTPSession.h"

#include <chrono>
#include <string>

namespace vorn::bench {

/// A service in this very process, so that what is measured is the window and not a network: it answers after
/// a moment, waits for a phone for ever, reviews for ever unless told otherwise, and takes an upload in the time that
/// its user would watch.
class NearService final : public HTTPSession {
public:
    static constexpr const char* handle = "+15550102030";

    struct Options {
        Clock::Duration questTakes = std::chrono::milliseconds(150);
        bool approves = false; ///< an upload at the first poll, instead of never
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
