#include "VornSandbox/Service/Call.h"

#include <algorithm>
#include <charconv>

namespace vorn::sandbox {
namespace {

std::string_view takeSegment(std::string_view& path)
{
    const auto end = std::min(path.find('/'), path.size());
    const std::string_view segment = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    return segment;
}

std::optional<std::vector<std::string>> fit(std::string_view pattern, std::string_view path)
{
    if (std::ranges::count(pattern, '/') != std::ranges::count(path, '/')) return std::nullopt;
    std::vector<std::string> arguments;
    while (!pattern.empty()) {
        const std::string_view expected = takeSegment(pattern);
        const std::string_view segment = takeSegment(path);
        if (expected == "*" && !segment.empty()) {
            arguments.emplace_back(segment);
        } else if (expected != segment) {
            return std::nullopt;
        }
    }
    return path.empty() ? std::optional(arguments) : std::nullopt;
}

} // namespace

const Route& match(const std::vector<Route>& routes, Call& call)
{
    bool known = false;
    for (const Route& route : routes) {
        auto arguments = fit(route.pattern, call.path);
        if (!arguments) continue;
        if (route.method == call.method) {
            call.arguments = *std::move(arguments);
            return route;
        }
        known = true;
    }
    if (known) throw ServiceError(405, "wrong_method", "That path does not take " + call.method + ".");
    throw ServiceError(404, "unknown_path", "There is nothing at that path.");
}

Answer Answer::of(const nlohmann::json& body, int status)
{
    return {.status = status, .body = body.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace)};
}

const std::string* Call::header(const std::string& lowerCaseName) const
{
    const auto found = headers.find(lowerCaseName);
    return found == headers.end() ? nullptr : &found->second;
}

std::string Call::queryValue(const std::string& name) const
{
    const auto found = query.find(name);
    return found == query.end() ? std::string() : found->second;
}

std::optional<std::int64_t> Call::contentLength() const
{
    const std::string* text = header("content-length");
    return text == nullptr ? std::nullopt : wholeNumber(*text);
}

bool Call::hasBody() const
{
    return header("transfer-encoding") != nullptr || contentLength().value_or(0) > 0;
}

std::string Call::bodyText(std::size_t limit) const
{
    std::string text;
    if (!hasBody()) return text;
    bool tooLarge = false;
    readBody([&](std::string_view piece) {
        tooLarge = tooLarge || text.size() + piece.size() > limit;
        if (!tooLarge) text += piece;
    });
    if (tooLarge) throw ServiceError(413, "too_large", "The request's body is too large.");
    return text;
}

std::string serviceURL(int port)
{
    return "http://127.0.0.1:" + std::to_string(port);
}

std::optional<std::int64_t> wholeNumber(std::string_view text)
{
    std::int64_t number = 0;
    const auto error = std::from_chars(text.data(), text.data() + text.size(), number).ec;
    const bool isPlain = error == std::errc() && number >= 0 && std::to_string(number) == text;
    return isPlain ? std::optional(number) : std::nullopt;
}

} // namespace vorn::sandbox
