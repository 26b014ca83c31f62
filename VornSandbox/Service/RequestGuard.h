#pragma once

#include "VornSandbox/Service/Call.h"

namespace vorn::sandbox {

/// Refuses, with `ServiceError` 403, what a page of another web site could make a browser send: a Host that is not this
/// service's (a name of theirs can be rebound to 127.0.0.1), anything that another page asked for, an Origin where no
/// page has business, and changes in a form that a browser sends elsewhere without asking first.
void guardRequest(const Call& call);

} // namespace vorn::sandbox
