#pragma once

#include "VornSandbox/Service/Backend.h"
#include "VornSandbox/Service/Router.h"

namespace vorn::sandbox {

/// The page that plays the phone, at /, and what it asks under /phone. `backend` must outlive `router`.
void addPhoneRoutes(Router& router, Backend& backend);

} // namespace vorn::sandbox
