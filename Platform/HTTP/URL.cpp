#include "Platform/HTTP/URL.h"

#include "Platform/Base/ASCII.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <charconv>

namespace vorn {
namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";
constexpr std::string_view subDelimiters = "!$&'()*+,;=";

bool isUnreserved(char c) noexcept
{
    return ascii::isAlphanumeric(c) || c == '-' || c == '.' || c == '_' || c == '~';
}
bool isSubDelimiter(char c) noexcept
{
    return subDelimiters.find(c) != std::string_view::npos;
}

/// `pchar` of RFC 3986 without percent escapes.
bool isPathCharacter(char c) noexcept
{
    return isUnreserved(c) || isSubDelimiter(c) || c == ':' || c == '@';
}

/// Whether every character of `text` is `allowed`, one of `more`, or part of a percent escape.
template <class Allowed>
bool consistsOf(std::string_view text, Allowed allowed, std::string_view more = {})
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (allowed(text[i]) || more.find(text[i]) != std::string_view::npos) continue;
        if (text[i] != '%' || i + 2 >= text.size() || !ascii::isHexDigit(text[i + 1]) ||
            !ascii::isHexDigit(text[i + 2]))
            return false;
        i += 2;
    }
    return true;
}

bool isScheme(std::string_view text)
{
    return !text.empty() && ascii::isLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char c) {
        return ascii::isAlphanumeric(c) || c == '+' || c == '-' || c == '.';
    });
}

/// Empty, or a number from 1 to 65535.
bool isPort(std::string_view text)
{
    if (text.empty()) return true;
    if (!std::all_of(text.begin(), text.end(), ascii::isDigit<char>)) return false;
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && number >= 1 && number <= 65535;
}

bool isIPv6Address(const std::string& text)
{
    std::array<unsigned char, 16> address{};
    return inet_pton(AF_INET6, text.c_str(), address.data()) == 1;
}

struct Authority {
    bool hasUserInfo = false;
    std::string host;
};

std::optional<Authority> parseAuthority(std::string_view text)
{
    const auto isNameCharacter = [](char c) { return isUnreserved(c) || isSubDelimiter(c); };
    Authority result;
    if (const auto at = text.find('@'); at != std::string_view::npos) {
        if (!consistsOf(text.substr(0, at), isNameCharacter, ":")) return std::nullopt;
        result.hasUserInfo = true;
        text.remove_prefix(at + 1);
    }
    std::string_view port;
    if (text.starts_with('[')) {
        const auto end = text.find(']');
        if (end == std::string_view::npos) return std::nullopt;
        result.host = ascii::lowercased(text.substr(1, end - 1));
        port = text.substr(end + 1);
        if (!isIPv6Address(result.host)) return std::nullopt;
    } else {
        const auto colon = std::min(text.find(':'), text.size());
        result.host = ascii::lowercased(text.substr(0, colon));
        port = text.substr(colon);
        if (result.host.empty() || !consistsOf(result.host, isNameCharacter)) return std::nullopt;
    }
    if (port.starts_with(':')) {
        port.remove_prefix(1);
    } else if (!port.empty()) {
        return std::nullopt;
    }
    if (!isPort(port)) return std::nullopt;
    return result;
}

void appendEncoded(std::string& to, std::string_view component)
{
    for (const char c : component) {
        if (isPathCharacter(c) || c == '/') {
            to += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        to += '%';
        to += hexDigits[byte >> 4U];
        to += hexDigits[byte & 15U];
    }
}

} // namespace

std::optional<URL> URL::parse(std::string_view text)
{
    const auto colon = text.find("://");
    if (colon == std::string_view::npos || !isScheme(text.substr(0, colon))) return std::nullopt;
    const std::string_view rest = text.substr(colon + 3);

    const auto authorityEnd = std::min(rest.find_first_of("/?#"), rest.size());
    auto authority = parseAuthority(rest.substr(0, authorityEnd));
    if (!authority) return std::nullopt;

    const auto pathEnd = std::min(rest.find_first_of("?#", authorityEnd), rest.size());
    const std::string_view path = rest.substr(authorityEnd, pathEnd - authorityEnd);
    const auto queryEnd = std::min(rest.find('#', pathEnd), rest.size());
    const std::string_view query = rest.substr(pathEnd, queryEnd - pathEnd);
    const std::string_view fragment = queryEnd < rest.size() ? rest.substr(queryEnd + 1) : std::string_view();
    if (!consistsOf(path, isPathCharacter, "/")) return std::nullopt;
    if (!consistsOf(query, isPathCharacter, "/?") || !consistsOf(fragment, isPathCharacter, "/?")) return std::nullopt;

    URL result;
    result.text_ = text;
    result.scheme_ = ascii::lowercased(text.substr(0, colon));
    result.host_ = std::move(authority->host);
    result.path_ = path;
    result.hasUserInfo_ = authority->hasUserInfo;
    result.pathStart_ = colon + 3 + authorityEnd;
    return result;
}

bool URL::isSecureOrLocal() const noexcept
{
    return scheme_ == "https" || (scheme_ == "http" && isThisMachine());
}

URL URL::appendingPathComponent(std::string_view component) const
{
    std::string path = path_;
    while (component.starts_with('/')) component.remove_prefix(1);
    if (!path.ends_with('/')) path += '/';
    appendEncoded(path, component);

    URL result = *this;
    result.text_.replace(pathStart_, path_.size(), path);
    result.path_ = std::move(path);
    return result;
}

} // namespace vorn
