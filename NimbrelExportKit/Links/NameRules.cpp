#include "NimbrelExportKit/Links/NameRules.h"

#include "NimbrelExportKit/Links/Scalars.h"
#include "Platform/Base/ASCII.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>

namespace vorn::links {
namespace {

bool isOneOf(std::string_view word, std::span<const std::string_view> sorted)
{
    return std::ranges::binary_search(sorted, word);
}

/// Top-level domains that are better known as file extensions.
constexpr std::array<std::string_view, 17> fileEndings = {"bz", "cab", "cc", "md", "mk", "mm", "mo", "mov", "pm",
                                                          "ps", "py",  "rs", "sc", "sh", "tf", "vi", "zip"};
static_assert(std::ranges::is_sorted(fileEndings));

/// Labels below which some countries' registries register names: "example.com.py" is not a file name.
constexpr std::array<std::string_view, 8> secondLevels = {"ac", "co", "com", "edu", "gob", "gov", "net", "org"};
static_assert(std::ranges::is_sorted(secondLevels));

/// Top-level domains that are also English words and may begin a sentence after a missing space: "Done.It works".
constexpr std::array<std::string_view, 15> sentenceWords = {"am", "as", "at", "be", "by", "do", "in", "is",
                                                            "it", "me", "my", "no", "so", "to", "us"};
static_assert(std::ranges::is_sorted(sentenceWords));

/// Top-level domains accepted after emoji: none is a word, as in "great 😀.so what".
constexpr std::array<std::string_view, 6> emojiEndings = {"com", "fm", "net", "org", "tk", "ws"};
static_assert(std::ranges::is_sorted(emojiEndings));

std::string_view firstLabel(std::string_view name)
{
    return name.substr(0, name.find('.'));
}

std::string_view labelBeforeLast(std::string_view name)
{
    const std::size_t last = name.rfind('.');
    const std::string_view rest = name.substr(0, last);
    return rest.substr(rest.rfind('.') + 1);
}

bool isNumber(std::string_view label)
{
    return std::ranges::all_of(label, [](char c) { return isDigit(c); });
}

bool isFileName(const BareName& name, std::string_view topLevel)
{
    if (topLevel == "so") return firstLabel(name.text).starts_with("lib");
    if (!isOneOf(topLevel, fileEndings)) return false;
    return name.host.labels == 2 || !isOneOf(ascii::lowercased(labelBeforeLast(name.text)), secondLevels);
}

bool isSentenceJoint(const BareName& name, std::string_view topLevel)
{
    const std::string_view written = name.host.topLevel;
    return written[0] < 'a' && written[1] >= 'a' && isOneOf(topLevel, sentenceWords);
}

/// Whether `name` is a function call such as "time.now(…)", not an address before a remark in brackets.
bool isCall(const BareName& name, std::string_view topLevel)
{
    return name.after.starts_with('(') && topLevel.size() > 2 && topLevel != "com" && topLevel != "org" &&
           topLevel != "net";
}

/// Whether `label`, the text before the first dot, ends with an emoji: more often the end of a sentence than a name.
bool endsWithEmoji(std::string_view label)
{
    std::size_t end = label.size();
    while (end > 0) {
        const Scalar scalar = scalarBefore(label, end);
        const Script script = scriptOf(scalar.value);
        if (script != Script::joiner) return script == Script::symbol;
        end -= scalar.size;
    }
    return false;
}

bool isVersion(const BareName& name)
{
    const std::string before =
        ascii::lowercased(name.before.substr(name.before.size() - std::min<std::size_t>(name.before.size(), 10)));
    const auto follows = [&](std::string_view word) { return before.ends_with(word); };
    return firstLabel(name.text) == "0" || follows("version ") || follows("version: ") || follows("ver. ") ||
           follows("build ") || follows("release ");
}

} // namespace

bool isAddress(const BareName& name)
{
    if (name.host.kind == Host::Kind::address) return name.hasPath || !isVersion(name);
    const std::string first = ascii::lowercased(firstLabel(name.text));
    if (first == "www") return name.host.labels > 2 || name.hasPath;
    if (name.hasPath) return true;
    const std::string topLevel = ascii::lowercased(name.host.topLevel);
    if (first == "com" && name.host.labels > 2) return false; // an identifier in reverse order: "com.example.app"
    if ((topLevel == "am" || topLevel == "pm") && isNumber(labelBeforeLast(name.text))) return false;
    if (endsWithEmoji(firstLabel(name.text)) && !isOneOf(topLevel, emojiEndings)) return false;
    return !isFileName(name, topLevel) && !isSentenceJoint(name, topLevel) && !isCall(name, topLevel);
}

} // namespace vorn::links
