#include "NimbrelExportKit/Links/CandidateScan.h"
#include "NimbrelExportKit/Links/TextLinkDetector.h"
#include "Platform/Base/Text.h"
#include "fuzz/Require.h"

#include <algorithm>
#include <cstdint>

namespace {

std::vector<std::string> found(std::string_view text)
{
    std::vector<std::string> urls;
    vorn::TextLinkDetector().find(text, urls);
    return urls;
}

bool mayStandInURL(char c)
{
    return c > ' ' && c < 0x7F && std::string_view("\"<>\\^`{|}").find(c) == std::string_view::npos;
}

bool isURL(const std::string& url)
{
    const std::string scheme = vorn::text::lowercased(url.substr(0, url.find("://")));
    return (scheme == "http" || scheme == "https") && url.size() > scheme.size() + 3 &&
           std::ranges::all_of(url, mayStandInURL);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The text may be ill-formed: even then the detector must not read outside it.
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> urls = found(text);
    vorn::require(std::ranges::all_of(urls, isURL), "every link is a URL of ASCII characters");

    vorn::require(urls.empty() || vorn::links::mayHoldLink(text), "text with links may hold links");

    // The links of a line do not depend on the lines around it.
    std::vector<std::string> twice = urls;
    twice.insert(twice.end(), urls.begin(), urls.end());
    twice.emplace_back("https://example.com/");
    vorn::require(found(text + "\n" + text + "\nhttps://example.com/") == twice,
                  "lines give the same links together and alone");
    return 0;
}
