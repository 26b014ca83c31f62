#include "NimbrelExportKit/Links/TextLinkDetector.h"

#include "NimbrelExportKit/Links/CandidateScan.h"
#include "NimbrelExportKit/Links/LinkSpan.h"
#include "NimbrelExportKit/Links/PercentEncoding.h"

namespace vorn {

namespace {

links::LinkSpan linkAt(std::string_view text, std::size_t at, std::size_t floor)
{
    if (text[at] == '.') return links::bareLink(text, at, floor);
    return text[at + 1] == '/' ? links::schemeLink(text, at, floor) : links::localLink(text, at, floor);
}

} // namespace

void TextLinkDetector::find(std::string_view text, std::vector<std::string>& urls) const
{
    using namespace links;
    std::size_t floor = 0;
    for (std::size_t at = nextCandidate(text, 0); at != std::string_view::npos; at = nextCandidate(text, floor)) {
        cancel_.check();
        const LinkSpan span = linkAt(text, at, floor);
        if (span.isLink()) {
            std::string& url = urls.emplace_back(span.hasScheme ? "" : "http://");
            appendPercentEncoded(text.substr(span.begin, span.end - span.begin), url);
        }
        floor = span.resumeAt;
    }
}

} // namespace vorn
