#include "tests/support/service/ServiceRequest.h"

#include <algorithm>
#include <utility>

namespace vorn::testing {

ServiceRequest ServiceRequest::of(const ReceivedRequest& received)
{
    return {received.method + " " + received.target, headersOf(received), received.body};
}

ExpectedRequest::ExpectedRequest(std::string method, std::string path, int port)
    : method_(std::move(method)), path_(std::move(path)), port_(port)
{
}

ExpectedRequest ExpectedRequest::bearer(const std::string& token) const
{
    ExpectedRequest copy = *this;
    copy.token_ = token;
    return copy;
}

ExpectedRequest ExpectedRequest::json(std::string body) const
{
    ExpectedRequest copy = *this;
    copy.body_ = std::move(body);
    return copy;
}

ExpectedRequest::operator ServiceRequest() const
{
    std::vector<std::string> headers{"Accept: application/json", "Host: 127.0.0.1:" + std::to_string(port_)};
    if (token_) headers.push_back("Authorization: Bearer " + *token_);
    if (body_) headers.emplace_back("Content-Type: application/json");
    const std::string body = body_.value_or("");
    if (method_ != "GET") headers.push_back("Content-Length: " + std::to_string(body.size()));
    std::sort(headers.begin(), headers.end());
    return {method_ + " /api/v1/" + path_, headers, body};
}

void PrintTo(const ServiceRequest& request, std::ostream* out)
{
    *out << "\n  " << request.line;
    for (const std::string& header : request.headers) *out << "\n  " << header;
    if (!request.body.empty()) *out << "\n  " << request.body;
    *out << "\n";
}

} // namespace vorn::testing
