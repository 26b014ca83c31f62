#pragma once

#include <string_view>

#include <QString>

namespace vorn {

/// The key under which QSettings keeps `key`. Two keys never share one. QSettings takes "/" for a folder and drops
/// those that are doubled: a dot becomes "/", and what could be mistaken becomes "%" and two digits.
QString settingsKey(std::string_view key);

} // namespace vorn
