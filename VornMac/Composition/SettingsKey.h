#pragma once

#include <string_view>

#include <QString>

namespace vorn {

/// The key under which QSettings keeps `key`; no two keys share one. QSettings takes "/" for a folder and drops doubled
/// ones: a dot becomes "/", and ambiguous characters become "%" and two digits.
QString settingsKey(std::string_view key);

} // namespace vorn
