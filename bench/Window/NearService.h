#pragma once

#include "Platform/Async/Clock.h"
#include "Platform/HTTP/HTTPSession.h"

#include <string>

namespace vorn::bench {

/// A service in this very process, so that what is measured is the window and not a network: it answers after
/// a moment, waits for a phone for ever, reviews for ever, and takes an upload in the time that its user would watch.
class NearService final : public HTTPSession {
public:
    static constexpr const char* handle = "+15550102030";

    /// `clock` outlives this object.
    explicit NearService(Clock& clock) : clock_(clock) {}

    Async<HTTPResponse> send(HTTPRequest request) override;

private:
    Async<HTTPResponse> answer(std::string path);
    std::string answerTo(const std::string& path) const;
    Async<HTTPResponse> take(HTTPRequest part);

    Clock& clock_;
};

} // namespace vorn::bench
