#pragma once

#include "Platform/Base/Bundle.h"
#include "Platform/HTTP/URL.h"

#include <optional>
#include <string>

namespace vorn {

/// Where the service is. A value; threads: any.
struct APIConfiguration {
    URL baseURL;
    bool operator==(const APIConfiguration&) const = default;

    static constexpr const char* versionPrefix = "api/v1";
    static constexpr const char* infoPlistKey = "VornAPIBaseURL";                ///< in the bundle's property list
    static constexpr const char* overrideDefaultsKey = "VornAPIBaseURLOverride"; ///< in the user defaults

    /// The default. Like the development host, it has a name under "example", a domain that RFC 2606 reserves so that
    /// no one can own it: a build without a configured service never sends tokens or exports to a stranger. A release
    /// sets the property-list key.
    static const URL& productionBaseURL();
    /// For developers to set as the override; never chosen automatically.
    static const URL& developmentBaseURL();

    /// Whether `text` is fit to be a base URL: an https URL, or an http URL of this machine ("localhost" or
    /// "127.0.0.1"), without user info, query or fragment: user info hides which host is meant, and the others cannot
    /// precede an endpoint's path.
    static bool isFit(const std::string& text);

    /// Returns the first of `overrideValue` and `infoValue` that is fit, else `productionBaseURL`. Ignores unfit values
    /// silently.
    static APIConfiguration resolve(const std::optional<std::string>& infoValue,
                                    const std::optional<std::string>& overrideValue);

    /// As above, with `bundle`'s value for `infoPlistKey`.
    static APIConfiguration resolve(const Bundle& bundle, const std::optional<std::string>& overrideValue);

    /// Returns the URL to which endpoint paths are appended: `baseURL` with the version prefix, added unless the path
    /// already ends with it (a trailing "/" aside).
    URL apiRoot() const;
};

} // namespace vorn
