#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Names of hosts outside ASCII (Unicode Technical Standard 46). Threads: any.
namespace vorn::idna {

/// `host`, labels between dots, in the form that resolvers know: "xn--bcher-kva.example" for "Bücher.example". Nothing
/// where the standard, in its nontransitional form, allows no such name, or where what it maps to is no name. Takes
/// well-formed UTF-8 without a dot at the end.
std::optional<std::string> toASCII(std::string_view host);

} // namespace vorn::idna
