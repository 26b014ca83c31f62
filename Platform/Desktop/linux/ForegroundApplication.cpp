#include "Platform/Desktop/ForegroundApplication.h"

namespace vorn {

void becomeRegularApplication()
{
}

void activateApplication()
{
}

} // namespace vorn
