#include "Platform/Desktop/MenuBar.h"

namespace vorn {

void setMenuBar(const std::vector<Menu>& /*menus*/)
{
}

} // namespace vorn
