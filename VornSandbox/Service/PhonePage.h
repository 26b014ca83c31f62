#pragma once

#include <string_view>

/// The files of the page that plays the phone, as they lie in the folder "page".
namespace vorn::sandbox::page {

extern const std::string_view html;
extern const std::string_view style;
extern const std::string_view script;

} // namespace vorn::sandbox::page
