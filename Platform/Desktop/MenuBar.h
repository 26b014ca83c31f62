#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vorn {

/// One entry of a menu.
struct MenuItem {
    /// What the entry does. The system implements the standard ones and finds their targets.
    enum class Kind { separator, action, about, hide, hideOthers, showAll, minimize, zoom, close, copy };

    Kind kind = Kind::separator;
    std::string title;
    std::string key;              ///< pressed with the Command key; empty for none
    std::function<void()> action; ///< for `Kind::action`
};

/// One menu of the application's menu bar.
struct Menu {
    std::string title;
    std::vector<MenuItem> items;
};

/// Replaces the application's menu bar. The first menu is the application menu, one with a `minimize` entry is the
/// Window menu, and the last is the Help menu. Does nothing on Linux, where the window offers the same commands as
/// keyboard shortcuts. Threads: the main one.
void setMenuBar(const std::vector<Menu>& menus);

} // namespace vorn
