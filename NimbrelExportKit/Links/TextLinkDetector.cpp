#include "NimbrelExportKit/Links/TextLinkDetector.h"

#include "NimbrelExportKit/Links/CandidateScan.h"
#include "NimbrelExportKit/Links/InternationalHost.h"
#include "NimbrelExportKit/Links/LinkSpan.h"
#include "NimbrelExportKit/Links/PercentEncoding.h"
#include "NimbrelExportKit/Links/Scalars.h"

#include <algorithm>

namespace vorn {

namespace {

links::LinkSpan linkAt(std::string_view text, std::size_t at, std::size_t floor)
{
    if (text[at] == '.') return links::bareLink(text, at, floor);
    return text[at + 1] == '/' ? links::schemeLink(text, at, floor) : links::localLink(text, at, floor);
}

/// Appends the URL of the link at `span`, unless its host has no ASCII form.
void append(std::string_view text, const links::LinkSpan& span, std::vector<std::string>& urls)
{
    const auto part = [text](std::size_t begin, std::size_t end) { return text.substr(begin, end - begin); };
    const std::string_view host = part(span.hostBegin, span.hostEnd);
    std::string url = span.hasScheme ? "" : "http://";
    if (std::ranges::all_of(host, links::isASCII)) {
        links::appendPercentEncoded(part(span.begin, span.end), url);
    } else {
        links::appendPercentEncoded(part(span.begin, span.hostBegin), url);
        if (!links::appendHost(host, url)) return;
        links::appendPercentEncoded(part(span.hostEnd, span.end), url);
    }
    urls.push_back(std::move(url));
}

} // namespace

void TextLinkDetector::find(std::string_view text, std::vector<std::string>& urls) const
{
    using namespace links;
    std::size_t floor = 0;
    for (std::size_t at = nextCandidate(text, 0); at != std::string_view::npos; at = nextCandidate(text, floor)) {
        cancel_.check();
        const LinkSpan span = linkAt(text, at, floor);
        if (span.isLink()) append(text, span, urls);
        floor = span.resumeAt;
    }
}

} // namespace vorn
