#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Host names that are not ASCII (Unicode Technical Standard 46). Threads: any.
namespace vorn::idna {

/// The ASCII form of `host`: "xn--bcher-kva.example" for "Bücher.example". Nothing if nontransitional processing
/// refuses it, or maps it to something that is not a host name. Takes well-formed UTF-8 without a trailing dot.
std::optional<std::string> toASCII(std::string_view host);

} // namespace vorn::idna
