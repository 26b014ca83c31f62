#include "VornMac/Text/AboutText.h"

namespace vorn {

std::string versionText(const std::string& version)
{
    return "Version " + version;
}

} // namespace vorn
