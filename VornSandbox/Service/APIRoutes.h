#pragma once

#include "VornSandbox/Service/Backend.h"
#include "VornSandbox/Service/Router.h"

namespace vorn::sandbox {

/// The JSON API under /api/v1. `backend` must outlive `router`.
void addAccountRoutes(Router& router, Backend& backend);    ///< links, sessions and the quest
void addSubmissionRoutes(Router& router, Backend& backend); ///< submissions and their part URLs

} // namespace vorn::sandbox
