#pragma once

#include "VornSandbox/Service/HTTP/Call.h"
#include "VornSandbox/Service/State/Backend.h"

namespace vorn::sandbox {

/// Tells a page what changes, as server-sent events (https://html.spec.whatwg.org/multipage/server-sent-events.html):
/// the whole view at once and after every change. `backend` must outlive the answer.
Answer watchPhone(Backend& backend);

} // namespace vorn::sandbox
