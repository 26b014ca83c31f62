#pragma once

#include "Platform/HTTP/HTTPSession.h"

#include <memory>
#include <utility>
#include <vector>

namespace vorn::testing {

/// Keeps the requests that pass through it. Threads: one, as its users send from one context.
class RecordingSession final : public HTTPSession {
public:
    explicit RecordingSession(std::shared_ptr<HTTPSession> next) : next_(std::move(next)) {}

    Async<HTTPResponse> send(HTTPRequest request) override
    {
        sent_.push_back(request);
        sent_.back().onBodyProgress = nullptr;
        return next_->send(std::move(request));
    }

    const std::vector<HTTPRequest>& sent() const { return sent_; }

private:
    std::shared_ptr<HTTPSession> next_;
    std::vector<HTTPRequest> sent_;
};

} // namespace vorn::testing
