#pragma once

#include "Platform/Async/Suspend.h"
#include "Platform/HTTP/HTTPSession.h"
#include "Platform/HTTP/URLError.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::testing {

/// The body of `request` as text; empty without a body.
std::string bodyTextOf(const HTTPRequest& request);

/// Holds every request until the test answers it: there is no network, and nothing happens by itself. Threads: one.
class HeldHTTPSession final : public HTTPSession {
public:
    Async<HTTPResponse> send(HTTPRequest request) override;

    /// How many requests were sent.
    std::size_t count() const { return held_.size(); }

    /// "GET /api/v1/desktop/nimbrel, Bearer token"; the second part only if there is a token.
    std::string summary(std::size_t index) const;
    std::vector<std::string> summaries() const;
    std::string body(std::size_t index) const;
    const HTTPRequest& request(std::size_t index) const { return held_.at(index)->request; }
    bool isCancelled(std::size_t index) const { return held_.at(index)->cancelled; }

    /// The requests that wait for an answer, in the form of `summary`; and the index of the first of them with this
    /// `summary`, whose second part may be left out.
    std::vector<std::string> waiting() const;
    std::optional<std::size_t> waiting(std::string_view summary) const;

    void answer(std::size_t index, int status, std::string body = "");
    /// Accepts an upload: 200 with this ETag.
    void acknowledge(std::size_t index, const std::string& tag);
    void fail(std::size_t index, URLError::Code code);

private:
    struct Held {
        HTTPRequest request;
        Resume<HTTPResponse> resume;
        bool cancelled = false;
        bool answered = false;
    };

    static Async<HTTPResponse> hold(HeldHTTPSession* self, HTTPRequest request);

    std::vector<std::shared_ptr<Held>> held_;
};

} // namespace vorn::testing
