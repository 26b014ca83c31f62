#include "Platform/Desktop/ForegroundApplication.h"

namespace vorn {

void becomeRegularApplication()
{
}

void activateApplication()
{
}

bool bounceDockIcon()
{
    return false;
}

} // namespace vorn
