#pragma once

#include <string_view>

#include <QString>

namespace vorn {

/// The key under which QSettings keeps `key`; no two keys share one. QSettings separates groups with "/" and drops
/// repeated ones: a single dot within `key` becomes "/", and every other byte, unless it is an ASCII letter, a digit,
/// "-" or "_", becomes "%" and two hexadecimal digits.
QString settingsKey(std::string_view key);

} // namespace vorn
