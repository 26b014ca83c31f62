#include "NimbrelExportKit/Links/InternationalHost.h"

#include "NimbrelExportKit/Links/Scalars.h"
#include "Platform/Base/IDNA.h"
#include "Platform/Base/Text.h"

#include <algorithm>
#include <charconv>

namespace vorn::links {
namespace {

constexpr auto npos = std::string_view::npos;

std::string withoutEscapes(std::string_view text)
{
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string_view digits = text.substr(at + 1, 2);
        unsigned char byte = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        const bool isEscape = text[at] == '%' && digits.size() == 2 && end == digits.data() + 2;
        bytes += isEscape ? static_cast<char>(byte) : text[at];
        if (isEscape) at += 2;
    }
    return bytes;
}

} // namespace

bool appendHost(std::string_view host, std::string& url)
{
    const auto ascii = idna::toASCII(host);
    if (ascii) url += *ascii;
    return ascii.has_value();
}

bool makeHostResolvable(std::string& url)
{
    const std::string_view all = url;
    const std::size_t separator = all.find("://");
    if (separator == npos) return true;
    std::size_t begin = separator + 3;
    const std::string_view authority = all.substr(begin, all.find_first_of("/?#", begin) - begin);
    begin += authority.rfind('@') + 1; // npos + 1 is 0
    std::string_view host = all.substr(begin, separator + 3 + authority.size() - begin);
    host = host.substr(0, host.starts_with('[') ? npos : host.find(':'));
    if (host.ends_with('.')) host.remove_suffix(1);
    if (std::ranges::all_of(host, [](char c) { return isASCII(c) && c != '%'; })) return true;

    const std::string name = withoutEscapes(host);
    std::string changed(all.substr(0, begin));
    if (!text::isWellFormed(name) || !appendHost(name, changed)) return false;
    url = changed.append(all.substr(begin + host.size()));
    return true;
}

} // namespace vorn::links
