#include "NimbrelExportKit/Links/CandidateScan.h"
#include "NimbrelExportKit/Links/HostName.h"
#include "NimbrelExportKit/Links/LinkSpan.h"
#include "NimbrelExportKit/Links/NameRules.h"
#include "NimbrelExportKit/Links/Scalars.h"
#include "NimbrelExportKit/Links/URLTail.h"

#include <algorithm>
#include <charconv>

namespace vorn::links {
namespace {

constexpr std::size_t longestLocalPart = 64;

/// Whether an address may begin at `begin`, given the text before it.
bool mayBeginAt(std::string_view text, std::size_t begin)
{
    if (begin == 0) return true;
    const std::string_view before = text.substr(0, begin);
    // Accepts "wait...example.com", but neither ".com" nor what follows an empty label.
    if (before.back() == '.') return before.ends_with("...");
    // Accepts an address that lacks only its scheme ("//example.com"), but not part of a path.
    if (before.back() == '/') {
        if (!before.ends_with("//")) return false;
        return before.size() == 2 ||
               !(isOneOf(before[before.size() - 3], ":/\\_") || isWordCharacter(before[before.size() - 3]));
    }
    if (before.ends_with("mailto:")) return false;
    return !isOneOf(before.back(), "@$#\\_-%&+");
}

/// Whether the name that ends at `end` belongs to the local part of an e-mail address.
bool isLocalPart(std::string_view text, std::size_t end)
{
    const std::size_t limit = std::min(text.size(), end + longestLocalPart);
    for (std::size_t at = end; at < limit; ++at) {
        const char c = text[at];
        if (c == '@') return at == end || (at + 1 < text.size() && isWordCharacter(text[at + 1]));
        if (!isAlphanumeric(c) && !isOneOf(c, "!$%&'*+-.=^_`{|}~")) return false;
    }
    return false;
}

/// The end of a port such as ":8080" at `at`; `at` if there is none, npos if the number is above 65535.
std::size_t portEnd(std::string_view text, std::size_t at)
{
    if (at + 1 >= text.size() || text[at] != ':' || !isDigit(text[at + 1])) return at;
    unsigned port = 0;
    const auto [end, error] = std::from_chars(text.data() + at + 1, text.data() + text.size(), port);
    return error == std::errc() && port <= 65535 ? static_cast<std::size_t>(end - text.data()) : std::string_view::npos;
}

} // namespace

LinkSpan bareLink(std::string_view text, std::size_t dot, std::size_t floor)
{
    const std::size_t wordBegin = labelStart(text, dot, floor);
    const std::size_t begin = text.find_first_not_of('_', wordBegin);
    if (begin == dot) return {.resumeAt = dot + 1};
    const char before = begin > 0 ? text[begin - 1] : '\0';
    const Host host = readHost(text, begin, before);
    const LinkSpan none{.resumeAt = std::max(host.readTo, dot + 1)};
    if ((host.kind != Host::Kind::known && host.kind != Host::Kind::address) || !mayBeginAt(text, wordBegin))
        return none;

    std::size_t end = portEnd(text, host.end);
    if (end == std::string_view::npos) return none;
    if (beginsTail(text, end)) end = tailEnd(text, end, before, text.substr(begin, host.end - begin));
    const BareName name{.text = text.substr(begin, host.end - begin),
                        .before = text.substr(0, begin),
                        .after = text.substr(host.end),
                        .host = host,
                        .hasPath = end > host.end && beginsTail(text, portEnd(text, host.end))};
    if (!isAddress(name) || isLocalPart(text, host.end)) return none;
    // A name after underscores is not a link, unless underscores after it show that they are emphasis. The path that
    // was read is skipped with the name: reading it again for each name in it would take quadratic time.
    if (begin > wordBegin && !text.substr(end).starts_with('_')) return {.resumeAt = end};
    return {.begin = begin, .end = end, .resumeAt = end, .hostBegin = begin, .hostEnd = host.end};
}

LinkSpan localLink(std::string_view text, std::size_t colon, std::size_t floor)
{
    const LinkSpan none{.resumeAt = colon + 1};
    const std::size_t begin = labelStart(text, colon, floor);
    if (colon - begin != localHost.size() || !mayBeginAt(text, begin)) return none;
    std::size_t end = portEnd(text, colon);
    if (end == std::string_view::npos) return none;
    if (beginsTail(text, end)) {
        end = tailEnd(text, end, begin > 0 ? text[begin - 1] : '\0');
    } else if (end < text.size() && (text[end] == '@' || isAlphanumeric(text[end]))) {
        return none;
    }
    return {.begin = begin, .end = end, .resumeAt = end, .hostBegin = begin, .hostEnd = colon};
}

} // namespace vorn::links
