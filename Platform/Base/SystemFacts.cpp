#include "Platform/Base/SystemFacts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include <fmt/format.h>
#include <unicode/uloc.h>

namespace vorn {
namespace {

constexpr std::string_view neutralTag = "en-US";

/// The script that a POSIX modifier ("@latin") stands for; other modifiers, such as "euro", name none.
std::string_view scriptOf(std::string_view modifier)
{
    if (modifier == "latin") return "_Latn";
    if (modifier == "cyrillic") return "_Cyrl";
    if (modifier == "devanagari") return "_Deva";
    return {};
}

/// `localeName` in ICU's form: without the encoding, with a POSIX modifier replaced by a script or variant.
std::string nameForICU(std::string_view localeName)
{
    const std::size_t at = std::min(localeName.find('@'), localeName.size());
    std::string name(localeName.substr(0, std::min(at, localeName.find('.'))));
    const std::string_view tail = localeName.substr(at);
    if (tail.find('=') != std::string_view::npos) return name.append(tail); // ICU's own keywords
    if (tail == "@valencia") return name + "_VALENCIA";
    if (!tail.empty()) name.insert(std::min(name.find('_'), name.size()), scriptOf(tail.substr(1)));
    return name;
}

} // namespace

std::string systemText(const SystemVersion& system)
{
    std::string text = fmt::format("macOS {}.{}", system.major, system.minor);
    if (system.patch > 0) text += fmt::format(".{}", system.patch);
    return text;
}

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

std::string languageTag(std::string_view localeName)
{
    const std::string name = nameForICU(localeName);
    if (name == "C" || name == "POSIX" || name == "en_US_POSIX") return std::string(neutralTag);
    std::array<char, 256> tag{};
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length = uloc_toLanguageTag(name.c_str(), tag.data(), tag.size(), true, &status);
    const std::string_view found(tag.data(), static_cast<std::size_t>(std::max(length, 0)));
    const bool sound = status == U_ZERO_ERROR && !found.starts_with("und");
    return std::string(sound ? found : neutralTag);
}

} // namespace vorn
