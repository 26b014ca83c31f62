#include "Platform/Desktop/WindowChrome.h"

namespace vorn {

void hideTitleBar(std::uintptr_t /*nativeView*/)
{
}

} // namespace vorn
