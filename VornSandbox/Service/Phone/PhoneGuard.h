#pragma once

#include "VornSandbox/Service/HTTP/Call.h"

namespace vorn::sandbox {

/// Refuses, with `ServiceError` 403, what a page of another web site could make a browser send: a Host that is not this
/// computer's (names can be rebound to 127.0.0.1), an Origin that is not this service, and changes in a form that needs
/// no permission from us.
void guardPhone(const Call& call);

} // namespace vorn::sandbox
