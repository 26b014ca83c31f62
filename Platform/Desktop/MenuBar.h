#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vorn {

/// One entry of a menu.
struct MenuItem {
    /// What the entry does; the system knows how to do the standard ones, and to whom.
    enum class Kind { separator, action, about, hide, hideOthers, showAll, minimize, zoom, close, copy };

    Kind kind = Kind::separator;
    std::string title;
    std::string key;              ///< with the command key; empty for none
    std::function<void()> action; ///< of an `action`
};

/// One menu of the application's menu bar.
struct Menu {
    std::string title;
    std::vector<MenuItem> items;
};

/// Replaces the application's menu bar. The first menu is the application's own, the one with an entry to minimise the
/// windows', and the last the help. Does nothing on Linux, where the window takes the same commands by key. Threads:
/// the main one.
void setMenuBar(const std::vector<Menu>& menus);

} // namespace vorn
