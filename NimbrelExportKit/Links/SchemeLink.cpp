#include "NimbrelExportKit/Links/HostName.h"
#include "NimbrelExportKit/Links/LinkSpan.h"
#include "NimbrelExportKit/Links/Scalars.h"
#include "NimbrelExportKit/Links/URLTail.h"

#include <algorithm>

namespace vorn::links {
namespace {

constexpr std::string_view separator = "://";

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase)
{
    // Case is one bit in letters; the names compared here have letters only.
    return std::ranges::equal(text, lowerCase, {}, [](char c) { return static_cast<char>(c | 0x20); });
}

/// The beginning of "http" or "https" before `colon`; `colon` if there is neither.
std::size_t schemeStart(std::string_view text, std::size_t colon, std::size_t floor)
{
    for (const std::string_view scheme : {std::string_view("https"), std::string_view("http")}) {
        if (colon < floor + scheme.size()) continue;
        const std::size_t begin = colon - scheme.size();
        if (equalsIgnoringCase(text.substr(begin, scheme.size()), scheme)) return begin;
    }
    return colon;
}

bool beginsWithScheme(std::string_view text)
{
    const std::size_t colon = text.substr(0, 8).find(separator);
    return colon != std::string_view::npos && schemeStart(text, colon, 0) == 0;
}

/// Mentions, tags and prices are not addresses, unless the sign ends a word: "name@http://…".
bool isRefusedBySign(std::string_view text, std::size_t begin)
{
    if (begin == 0) return false;
    const char before = text[begin - 1];
    if (before != '@' && before != '#' && before != '$') return false;
    return begin < 2 || !isWordCharacter(text[begin - 2]);
}

/// The beginning of the host, after a user name and password if there are any. A user name with characters other than
/// ASCII letters, digits and "-._~%+" counts only if a password follows and no known host precedes the colon:
/// apostrophes and commas may also separate an address from an e-mail address.
std::size_t hostStart(std::string_view text, std::size_t at)
{
    bool colon = false;
    bool anyMarks = false;
    for (std::size_t next = at; next < text.size(); ++next) {
        const char c = text[next];
        if (!isASCII(c)) {
            const Scalar scalar = scalarAt(text, next);
            if (scriptOf(scalar.value) != Script::latin) break;
            anyMarks = true;
            next += scalar.size - 1;
            continue;
        }
        if (c == '@') {
            const bool isUser = next > at && (!anyMarks || (colon && readHost(text, at).kind != Host::Kind::known));
            return isUser ? next + 1 : at;
        }
        if (c == ':') {
            colon = true;
        } else if (isOneOf(c, "!$&'()*,;=")) {
            anyMarks = true;
        } else if (!isAlphanumeric(c) && !isOneOf(c, "-._~%+")) {
            break;
        }
    }
    return at;
}

std::size_t skipPort(std::string_view text, std::size_t at)
{
    if (at >= text.size() || text[at] != ':') return at;
    std::size_t end = at + 1;
    while (end < text.size() && isDigit(text[end])) ++end;
    return end > at + 1 ? end : at;
}

/// Skips the dot of the DNS root after a name, if a port or a path follows.
std::size_t skipRootDot(std::string_view text, std::size_t at)
{
    const std::string_view rest = text.substr(at);
    const bool named =
        rest.size() > 1 && rest[0] == '.' && (rest[1] == '/' || (rest[1] == ':' && skipPort(text, at + 1) > at + 1));
    return named ? at + 1 : at;
}

/// Whether `host` is still a host, given the text that follows. A single name directly followed by other text is not:
/// "http://http://…", "http://this!that.com", "http://some[.]where".
bool isAccepted(std::string_view text, const Host& host)
{
    if (host.kind == Host::Kind::none) return false;
    const std::string_view rest = text.substr(host.end);
    // No top-level domain has only one letter, but a path shows that an address was meant.
    if (host.kind == Host::Kind::unknown && host.topLevel.size() == 1 && !beginsTail(text, skipPort(text, host.end)))
        return false;
    if (rest.empty()) return true;
    if (isOneOf(rest[0], "@%\\")) return false;
    if (host.kind != Host::Kind::singleName || rest.size() == 1) return true;
    if (rest.starts_with("…") || rest.starts_with(".…")) return false; // the beginning of an address that was cut short
    const bool wordFollows = isWordCharacter(rest[1]);
    if (rest[0] == ':') return skipPort(text, host.end) > host.end || (!wordFollows && rest[1] != '/');
    if (rest[0] == '[') return rest[1] != '.';
    return !wordFollows || !isOneOf(rest[0], "!$&'(*+,;=~");
}

/// The end of the text at `at` that could be the path of an address; `at` at the end of `text`.
std::size_t afterWord(std::string_view text, std::size_t at, char before)
{
    return at < text.size() ? tailEnd(text, at, before) : at;
}

/// Where to continue after a refused address: its path holds no link, but its host may hold the beginning of one.
std::size_t afterRefused(std::string_view text, const Host& host, std::size_t authority, char before)
{
    const std::size_t at = std::max(host.readTo, authority);
    return host.readTo < host.end ? at : afterWord(text, at, before);
}

} // namespace

LinkSpan schemeLink(std::string_view text, std::size_t colon, std::size_t floor)
{
    const std::size_t authority = colon + separator.size();
    const std::size_t begin = schemeStart(text, colon, floor);
    const char before = begin > 0 ? text[begin - 1] : '\0';
    if (begin == colon) { // of another scheme
        return {.resumeAt = beginsWithScheme(text.substr(authority)) ? authority : afterWord(text, authority, before)};
    }
    const Host host = readHost(text, hostStart(text, authority), before);
    if (isRefusedBySign(text, begin) || !isAccepted(text, host)) {
        return {.resumeAt = afterRefused(text, host, authority, before)};
    }
    std::size_t end = skipPort(text, skipRootDot(text, host.end));
    if (beginsTail(text, end)) end = tailEnd(text, end, before, text.substr(host.begin, host.end - host.begin));
    if (before == '_' && !text.substr(end).starts_with('_')) return {.resumeAt = end}; // part of a name, not emphasis
    return {
        .begin = begin, .end = end, .resumeAt = end, .hostBegin = host.begin, .hostEnd = host.end, .hasScheme = true};
}

} // namespace vorn::links
