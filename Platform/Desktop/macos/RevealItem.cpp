#include "Platform/Desktop/RevealItem.h"

#include "Platform/Desktop/DetachedProgram.h"
#include "Platform/Desktop/SystemWorkspace.h"

namespace vorn {

DesktopPrograms DesktopPrograms::ofSystem()
{
    return {.open = "/usr/bin/open", .shell = "/bin/sh"};
}

void revealItem(const std::filesystem::path& item, const std::string& opener)
{
    const DetachedProgram program(opener, {"-R", item.native()});
}

} // namespace vorn
