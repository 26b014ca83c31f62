#include "Platform/HTTP/HTTPHeaders.h"

#include "Platform/Base/ASCII.h"

#include <algorithm>

namespace vorn {

const std::string* findHeader(const HTTPHeaders& headers, std::string_view name) noexcept
{
    const auto found = std::find_if(headers.begin(), headers.end(), [name](const auto& header) {
        return ascii::equalIgnoringCase(header.first, name);
    });
    return found == headers.end() ? nullptr : &found->second;
}

} // namespace vorn
