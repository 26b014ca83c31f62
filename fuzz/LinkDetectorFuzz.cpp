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
    // Also text that is not well-formed: the detector must stay inside it.
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> urls = found(text);
    vorn::require(std::ranges::all_of(urls, isURL), "every link is a URL of ASCII characters");

    vorn::require(urls.empty() || vorn::links::mayHoldLink(text), "text with links may hold links");

    // A line knows nothing of the lines before and after it.
    std::vector<std::string> twice = urls;
    twice.insert(twice.end(), urls.begin(), urls.end());
    twice.emplace_back("https://example.com/");
    vorn::require(found(text + "\n" + text + "\nhttps://example.com/") == twice,
                  "lines give the same links together and alone");
    return 0;
}
