#include "Platform/Base/BundleInfo.h"

namespace vorn {

std::optional<std::string> mainBundleText(const std::string& /*key*/)
{
    return std::nullopt; // programs carry no property list here
}

} // namespace vorn
