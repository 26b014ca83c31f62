#include "tests/support/http/Exchange.h"

#include "Platform/Base/ASCII.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace vorn::testing {
namespace {

bool names(const HeaderList& headers, std::string_view name)
{
    return std::any_of(headers.begin(), headers.end(),
                       [&](const auto& header) { return ascii::equalIgnoringCase(header.first, name); });
}

std::string reasonOf(int status)
{
    switch (status) {
    case 200: return "OK";
    case 201: return "Created";
    case 204: return "No Content";
    case 302: return "Found";
    case 401: return "Unauthorized";
    case 403: return "Forbidden";
    case 404: return "Not Found";
    default: return "Status " + std::to_string(status);
    }
}

} // namespace

std::optional<std::string> ReceivedRequest::header(std::string_view name) const
{
    std::optional<std::string> found;
    for (const auto& [key, value] : headers) {
        if (!ascii::equalIgnoringCase(key, name)) continue;
        EXPECT_FALSE(found) << "header " << name << " came twice";
        found = value;
    }
    return found;
}

std::vector<std::string> headerNames(const ReceivedRequest& request)
{
    std::vector<std::string> result;
    for (const auto& header : request.headers) result.push_back(header.first);
    std::sort(result.begin(), result.end());
    return result;
}

std::vector<std::string> headersOf(const ReceivedRequest& request)
{
    std::vector<std::string> result;
    for (const auto& [name, value] : request.headers) result.push_back(std::string(name).append(": ").append(value));
    std::sort(result.begin(), result.end());
    return result;
}

Answer Answer::json(int status, std::string body)
{
    return {.status = status, .headers = {{"Content-Type", "application/json"}}, .body = std::move(body)};
}

std::string Answer::text() const
{
    std::string result = sentBefore;
    const auto add = [&result](const auto&... pieces) { (result.append(pieces), ...); };
    add("HTTP/1.1 ", std::to_string(status), " ", reasonOf(status), "\r\n");
    for (const auto& [name, value] : headers) add(name, ": ", value, "\r\n");
    const bool mayHaveBody = status != 204 && status != 304;
    if (mayHaveBody && !names(headers, "Content-Length") && !names(headers, "Transfer-Encoding")) {
        add("Content-Length: ", std::to_string(body.size()), "\r\n");
    }
    if (closes) add("Connection: close\r\n");
    add("\r\n", body);
    return result;
}

void Exchange::answer(const Answer& answer)
{
    send(answer.text());
    if (answer.closes) close();
}

} // namespace vorn::testing
