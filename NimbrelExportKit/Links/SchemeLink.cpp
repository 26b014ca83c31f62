#include "NimbrelExportKit/Links/HostName.h"
#include "NimbrelExportKit/Links/LinkSpan.h"
#include "NimbrelExportKit/Links/Scalars.h"
#include "NimbrelExportKit/Links/URLTail.h"

#include <algorithm>

namespace vorn::links {
namespace {

constexpr std::string_view separator = "://";

bool isWordCharacter(char c)
{
    return !isASCII(c) || isAlphanumeric(static_cast<unsigned char>(c));
}

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase)
{
    // Letters differ in one bit; the names compared here are letters only.
    return std::ranges::equal(text, lowerCase, {}, [](char c) { return static_cast<char>(c | 0x20); });
}

/// Where "http" or "https" in front of `colon` begins; `colon` when neither is there.
std::size_t schemeStart(std::string_view text, std::size_t colon, std::size_t floor)
{
    for (const std::string_view scheme : {std::string_view("https"), std::string_view("http")}) {
        if (colon < floor + scheme.size()) continue;
        const std::size_t begin = colon - scheme.size();
        if (equalsIgnoringCase(text.substr(begin, scheme.size()), scheme)) return begin;
    }
    return colon;
}

/// A mention, a tag or a price is no address, unless the sign ends a word: "name@http://…".
bool isRefusedBySign(std::string_view text, std::size_t begin)
{
    if (begin == 0) return false;
    const char before = text[begin - 1];
    if (before == '_') return true;
    if (before != '@' && before != '#' && before != '$') return false;
    return begin < 2 || !isWordCharacter(text[begin - 2]);
}

/// Where the host begins: behind a user name and password, if there are any. A name alone is made of letters, digits
/// and a few marks; what follows a colon may hold more.
std::size_t hostStart(std::string_view text, std::size_t at)
{
    bool password = false;
    for (std::size_t next = at; next < text.size(); ++next) {
        const char c = text[next];
        if (c == '@') return next > at ? next + 1 : at;
        if (isAlphanumeric(static_cast<unsigned char>(c)) ||
            std::string_view("-._~%+").find(c) != std::string_view::npos)
            continue;
        if (c == ':') {
            password = true;
        } else if (!password || std::string_view("!$&'()*,;=").find(c) == std::string_view::npos) {
            break;
        }
    }
    return at;
}

std::size_t skipPort(std::string_view text, std::size_t at)
{
    if (at >= text.size() || text[at] != ':') return at;
    std::size_t end = at + 1;
    while (end < text.size() && isDigit(static_cast<unsigned char>(text[end]))) ++end;
    return end > at + 1 ? end : at;
}

/// A dot that ends the name of the root, in front of a port or a path.
std::size_t skipRootDot(std::string_view text, std::size_t at)
{
    const std::string_view rest = text.substr(at);
    const bool named =
        rest.size() > 1 && rest[0] == '.' && (rest[1] == '/' || (rest[1] == ':' && skipPort(text, at + 1) > at + 1));
    return named ? at + 1 : at;
}

bool isAccepted(std::string_view text, const Host& host)
{
    if (host.kind == Host::Kind::none) return false;
    const std::string_view rest = text.substr(host.end);
    if (rest.empty()) return true;
    if (rest[0] == '@' || rest[0] == '%') return false;
    // "http://this!that.com", "http://http://…": a single name that something else is glued to.
    if (host.kind != Host::Kind::singleName) return true;
    if (rest[0] == ':')
        return skipPort(text, host.end) > host.end || rest.size() == 1 || !(isWordCharacter(rest[1]) || rest[1] == '/');
    return !(rest.size() > 1 && std::string_view("!$&'*+,;=~").find(rest[0]) != std::string_view::npos &&
             isWordCharacter(rest[1]));
}

bool beginsTail(std::string_view text, std::size_t at)
{
    return at < text.size() && (text[at] == '/' || text[at] == '?' || text[at] == '#');
}

} // namespace

LinkSpan schemeLink(std::string_view text, std::size_t colon, std::size_t floor)
{
    const std::size_t authority = colon + separator.size();
    const std::size_t begin = schemeStart(text, colon, floor);
    const char before = begin > 0 ? text[begin - 1] : '\0';
    if (begin == colon) { // of another scheme
        return {.resumeAt =
                    authority < text.size() && text[authority] > ' ' ? tailEnd(text, authority, before) : authority};
    }
    const Host host = readHost(text, hostStart(text, authority));
    const std::size_t readTo = std::max(host.readTo, authority);
    if (isRefusedBySign(text, begin) || !isAccepted(text, host)) return {.resumeAt = readTo};
    std::size_t end = skipPort(text, skipRootDot(text, host.end));
    if (beginsTail(text, end)) end = tailEnd(text, end, before);
    return {.begin = begin, .end = end, .resumeAt = end, .hasScheme = true};
}

} // namespace vorn::links
