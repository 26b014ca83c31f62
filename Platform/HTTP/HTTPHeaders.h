#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorn {

/// Header names and values, in the order of the message.
using HTTPHeaders = std::vector<std::pair<std::string, std::string>>;

/// The value of the first header named `name`, ignoring case; null when there is none.
const std::string* findHeader(const HTTPHeaders& headers, std::string_view name) noexcept;

} // namespace vorn
