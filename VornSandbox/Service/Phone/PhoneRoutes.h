#pragma once

#include "VornSandbox/Service/HTTP/Router.h"
#include "VornSandbox/Service/State/Backend.h"

namespace vorn::sandbox {

/// The page that plays the phone, at /, and what it asks under /phone. `backend` must outlive `router`.
void addPhoneRoutes(Router& router, Backend& backend);

} // namespace vorn::sandbox
