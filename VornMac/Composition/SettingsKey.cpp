#include "VornMac/Composition/SettingsKey.h"

namespace vorn {
namespace {

bool isPlain(char letter)
{
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_";
    return plain.find(letter) != std::string_view::npos;
}

/// Whether the character is a dot between two characters other than dots: QSettings would drop the "/" of any other
/// dot.
bool isSeparator(std::string_view key, std::size_t at)
{
    return key[at] == '.' && at > 0 && at + 1 < key.size() && key[at - 1] != '.' && key[at + 1] != '.';
}

} // namespace

QString settingsKey(std::string_view key)
{
    if (key.empty()) return QStringLiteral("%"); // no other key maps to it
    QString result;
    for (std::size_t at = 0; at < key.size(); ++at) {
        if (isPlain(key[at]))
            result += QLatin1Char(key[at]);
        else if (isSeparator(key, at))
            result += QLatin1Char('/');
        else
            result += QStringLiteral("%%1").arg(static_cast<unsigned char>(key[at]), 2, 16, QLatin1Char('0'));
    }
    return result;
}

} // namespace vorn
