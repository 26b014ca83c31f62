#include "VornMacCore/Wire/Application.h"

namespace vorn {

const Bundle& applicationBundle()
{
    static const Bundle bundle = Bundle::main({
        {"CFBundleIdentifier", VORN_BUNDLE_IDENTIFIER},
        {"CFBundleShortVersionString", VORN_VERSION},
    });
    return bundle;
}

const std::string& bundleIdentifier()
{
    static const std::string identifier = applicationBundle().text("CFBundleIdentifier").value_or("");
    return identifier;
}

} // namespace vorn
