#include "VornSandbox/Service/Call.h"

#include "VornSandbox/Service/ServiceError.h"

#include <charconv>

namespace vorn::sandbox {

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
    if (text == nullptr) return std::nullopt;
    std::int64_t length = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), length);
    if (error != std::errc() || end != text->data() + text->size() || length < 0) return std::nullopt;
    return length;
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

} // namespace vorn::sandbox
