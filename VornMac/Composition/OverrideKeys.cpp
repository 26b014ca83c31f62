#include "VornMac/Composition/OverrideKeys.h"

#include "Platform/Base/ASCII.h"
#include "Platform/Base/PrintableText.h"
#include "VornMacCore/Client/APIConfiguration.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vorn::overrides {
namespace {

bool isOneOf(const std::string& value, std::initializer_list<std::string_view> words)
{
    return std::ranges::find(words, ascii::lowercased(value)) != words.end();
}

bool isAnswer(const std::string& value)
{
    return isOneOf(value, {"yes", "true", "1", "no", "false", "0"});
}

/// False for what looks like another option. A file of such a name can be given as "./-name".
bool isPath(const std::string& value)
{
    return !value.empty() && !value.starts_with('-');
}

constexpr const char* yesOrNo = "YES or NO";

constexpr std::array all{
    Key{APIConfiguration::overrideDefaultsKey, "URL", "the service to use, https or on this computer", true,
        "an https address, or an http address on this computer", &APIConfiguration::isFit},
    Key{messagesDatabase, "FILE", "the Messages database to read", true, "a file", &isPath},
    Key{settingsFile, "FILE", "keep settings there, and leave the user's alone", true, "a file", &isPath},
    Key{appearance, "light|dark", "the appearance, instead of the system's", false, "light or dark",
        [](const std::string& value) { return value == "light" || value == "dark"; }},
    Key{reduceMotion, "YES|NO", "whether to avoid motion, instead of the system's setting", false, yesOrNo, &isAnswer},
    Key{forgetsSession, "YES|NO", "keep the session for this run alone", false, yesOrNo, &isAnswer},
};

bool isTheSystems(const std::string& key)
{
    return key.starts_with("NS") || key.starts_with("Apple");
}

const Key* find(const std::vector<Key>& keys, const std::string& name)
{
    const auto found = std::ranges::find_if(keys, [&](const Key& key) { return key.name == name; });
    return found == keys.end() ? nullptr : &*found;
}

/// "-A, -B and -C"
std::string namesOf(const std::vector<Key>& keys)
{
    std::string names;
    for (const Key& key : keys) {
        if (!names.empty()) names += &key == &keys.back() ? " and " : ", ";
        names += "-" + std::string(key.name);
    }
    return names;
}

std::string unknown(const std::string& key, const std::vector<Key>& keys)
{
    return "There is no -" + printable(key) + ", only " + namesOf(keys);
}

std::optional<std::string> unfit(const Key& key, const std::string& name, const std::string& value)
{
    if (key.isFit(value)) return std::nullopt;
    return name + " must be " + key.fit + ", not \"" + printable(value) + "\"";
}

} // namespace

std::vector<Key> keysOf(Program program)
{
    std::vector<Key> keys;
    for (const Key& key : all)
        if (program == Program::window || key.inTerminal) keys.push_back(key);
    return keys;
}

std::optional<std::string> mistakeOnLine(const ArgumentDefaults& pairs, std::span<const std::string> words,
                                         Program program)
{
    const std::vector<Key> keys = keysOf(program);
    for (const auto& [name, value] : pairs.values()) {
        if (isTheSystems(name)) continue;
        const Key* key = find(keys, name);
        if (key == nullptr) return unknown(name, keys);
        if (const auto mistake = unfit(*key, "-" + name, value)) return mistake;
    }
    const auto end = std::ranges::find(words, "--"); // nothing after it is an override
    const auto keyWithoutValue = std::find_if(words.begin(), end, &ArgumentDefaults::isKey);
    if (keyWithoutValue == end) return std::nullopt;
    const std::string name = keyWithoutValue->substr(1);
    return find(keys, name) == nullptr ? unknown(name, keys) : "-" + name + " needs a value";
}

std::optional<std::string> mistakeIn(const UserDefaults& defaults, Program program)
{
    for (const Key& key : keysOf(program)) {
        const auto value = defaults.text(key.name);
        if (!value) continue;
        if (const auto mistake = unfit(key, "The setting " + std::string(key.name), *value)) return mistake;
    }
    return std::nullopt;
}

} // namespace vorn::overrides
