#include "Platform/HTTP/SystemProxy.h"

namespace vorn {

std::shared_ptr<SystemProxy> SystemProxy::ofSystem()
{
    return nullptr;
}

} // namespace vorn
