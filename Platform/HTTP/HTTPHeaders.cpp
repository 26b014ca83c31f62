#include "Platform/HTTP/HTTPHeaders.h"

#include <algorithm>
#include <strings.h>

namespace vorn {

const std::string* findHeader(const HTTPHeaders& headers, std::string_view name) noexcept
{
    const auto found = std::find_if(headers.begin(), headers.end(), [name](const auto& header) {
        const std::string& key = header.first;
        return key.size() == name.size() && strncasecmp(key.data(), name.data(), name.size()) == 0;
    });
    return found == headers.end() ? nullptr : &found->second;
}

} // namespace vorn
