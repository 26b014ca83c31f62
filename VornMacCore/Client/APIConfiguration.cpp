#include "VornMacCore/Client/APIConfiguration.h"

#include "Platform/Base/Fatal.h"

#include <string_view>

namespace vorn {
namespace {

URL builtIn(std::string_view text)
{
    std::optional<URL> url = URL::parse(text);
    if (!url) fatalError("a built-in address is not a URL");
    return *std::move(url);
}

std::optional<URL> fitBaseURL(const std::optional<std::string>& text)
{
    if (!text || text->find_first_of("?#") != std::string::npos) return std::nullopt;
    std::optional<URL> url = URL::parse(*text);
    if (!url || !url->isSecureOrLocal() || url->hasUserInfo()) return std::nullopt;
    return url;
}

} // namespace

const URL& APIConfiguration::productionBaseURL()
{
    static const URL url = builtIn("https://api.vorn.example");
    return url;
}

const URL& APIConfiguration::developmentBaseURL()
{
    static const URL url = builtIn("https://api.dev.vorn.example");
    return url;
}

bool APIConfiguration::isFit(const std::string& text)
{
    return fitBaseURL(text).has_value();
}

APIConfiguration APIConfiguration::resolve(const std::optional<std::string>& infoValue,
                                           const std::optional<std::string>& overrideValue)
{
    if (const auto url = fitBaseURL(overrideValue)) return {*url};
    if (const auto url = fitBaseURL(infoValue)) return {*url};
    return {productionBaseURL()};
}

APIConfiguration APIConfiguration::resolve(const Bundle& bundle, const std::optional<std::string>& overrideValue)
{
    return resolve(bundle.text(infoPlistKey), overrideValue);
}

URL APIConfiguration::apiRoot() const
{
    std::string_view path = baseURL.path();
    if (path.ends_with('/')) path.remove_suffix(1);
    const bool hasPrefix = path.ends_with("/" + std::string(versionPrefix));
    return hasPrefix ? baseURL : baseURL.appendingPathComponent(versionPrefix);
}

} // namespace vorn
