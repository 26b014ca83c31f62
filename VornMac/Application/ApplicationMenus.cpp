#include "VornMac/Application/ApplicationMenus.h"

#include "VornMac/Text/AboutText.h"

namespace vorn {

std::vector<Menu> applicationMenus(const std::string& noticesAddress,
                                   const std::function<void(const std::string&)>& open,
                                   const std::function<void()>& quit)
{
    using Kind = MenuItem::Kind;
    const auto opening = [open](const std::string& address) { return [open, address] { open(address); }; };
    return {{applicationName,
             {{Kind::about, aboutVorn, {}, {}},
              {},
              {Kind::hide, hideVorn, "h", {}},
              {Kind::hideOthers, hideOthers, "h", {}},
              {Kind::showAll, showAll, {}, {}},
              {},
              {Kind::action, quitVorn, "q", quit}}},
            {editMenu, {{Kind::copy, copyEntry, "c", {}}}},
            {windowMenu,
             {{Kind::minimize, minimizeEntry, "m", {}},
              {Kind::zoom, zoomEntry, {}, {}},
              {},
              {Kind::close, closeEntry, "w", {}}}},
            {helpMenu,
             {{Kind::action, vornHelp, "?", opening(helpAddress)},
              {Kind::action, privacy, {}, opening(privacyAddress)},
              {Kind::action, notices, {}, opening(noticesAddress)}}}};
}

} // namespace vorn
