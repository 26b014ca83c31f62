#include "tests/support/service/HeldHTTPSession.h"

#include <utility>

namespace vorn::testing {
namespace {

std::string nameOf(HTTPRequest::Method method)
{
    switch (method) {
    case HTTPRequest::Method::get: return "GET";
    case HTTPRequest::Method::post: return "POST";
    case HTTPRequest::Method::put: return "PUT";
    }
    return "?";
}

} // namespace

Async<HTTPResponse> HeldHTTPSession::send(HTTPRequest request)
{
    return hold(this, std::move(request));
}

Async<HTTPResponse> HeldHTTPSession::hold(HeldHTTPSession* self, HTTPRequest request)
{
    co_return co_await suspend<HTTPResponse>([self, &request](Resume<HTTPResponse> resume) -> CancelAction {
        const auto held = std::make_shared<Held>(Held{std::move(request), std::move(resume)});
        self->held_.push_back(held);
        return [held] { held->cancelled = true; };
    });
}

std::string HeldHTTPSession::summary(std::size_t index) const
{
    const HTTPRequest& request = held_.at(index)->request;
    std::string result = nameOf(request.method) + " " + request.url.path();
    for (const auto& [name, value] : request.headers) {
        if (name == "Authorization") result += ", " + value;
    }
    return result;
}

std::vector<std::string> HeldHTTPSession::summaries() const
{
    std::vector<std::string> result;
    for (std::size_t index = 0; index < count(); ++index) result.push_back(summary(index));
    return result;
}

std::vector<std::string> HeldHTTPSession::waiting() const
{
    std::vector<std::string> result;
    for (std::size_t index = 0; index < count(); ++index)
        if (!held_[index]->answered && !held_[index]->cancelled) result.push_back(summary(index));
    return result;
}

std::optional<std::size_t> HeldHTTPSession::waiting(std::string_view summary) const
{
    for (std::size_t index = 0; index < count(); ++index) {
        if (held_[index]->answered || held_[index]->cancelled) continue;
        if ((this->summary(index) + ",").starts_with(std::string(summary) + ",")) return index;
    }
    return std::nullopt;
}

std::string bodyTextOf(const HTTPRequest& request)
{
    if (!request.body) return "";
    std::string text(static_cast<std::size_t>(request.body->size()), '\0');
    text.resize(request.body->read(0, std::as_writable_bytes(std::span(text))));
    return text;
}

std::string HeldHTTPSession::body(std::size_t index) const
{
    return bodyTextOf(held_.at(index)->request);
}

void HeldHTTPSession::answer(std::size_t index, int status, std::string body)
{
    held_.at(index)->answered = true;
    held_.at(index)->resume(HTTPResponse{status, {{"Content-Type", "application/json"}}, std::move(body)});
}

void HeldHTTPSession::acknowledge(std::size_t index, const std::string& tag)
{
    held_.at(index)->answered = true;
    held_.at(index)->resume(HTTPResponse{200, {{"ETag", tag}}, ""});
}

void HeldHTTPSession::fail(std::size_t index, URLError::Code code)
{
    held_.at(index)->answered = true;
    held_.at(index)->resume.fail(std::make_exception_ptr(URLError(code)));
}

} // namespace vorn::testing
