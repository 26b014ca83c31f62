#pragma once

#include "VornSandbox/Service/Backend.h"
#include "VornSandbox/Service/Router.h"

namespace vorn::sandbox {

/// Where parts are put, under /uploads. The URL alone gives the right to; `backend` must outlive `router`.
void addUploadRoutes(Router& router, Backend& backend);

} // namespace vorn::sandbox
