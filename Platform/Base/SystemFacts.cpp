#include "Platform/Base/SystemFacts.h"

#include <charconv>

namespace vorn {

SystemVersion parseSystemVersion(std::string_view text)
{
    SystemVersion version;
    for (int* part : {&version.major, &version.minor, &version.patch}) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *part);
        if (error != std::errc()) break;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        if (!text.starts_with('.')) break;
        text.remove_prefix(1);
    }
    return version;
}

} // namespace vorn
