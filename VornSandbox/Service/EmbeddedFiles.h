#pragma once

#include <string_view>

namespace vorn::sandbox {

/// Creates the tables of the state.
extern const char* const stateSchema;

/// The files of the page that plays the phone, from the folder "page".
namespace page {

extern const std::string_view html;
extern const std::string_view style;
extern const std::string_view script;

} // namespace page

} // namespace vorn::sandbox
