#pragma once

#include "VornSandbox/Service/Backend.h"
#include "VornSandbox/Service/Call.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace vorn::sandbox {

/// The view as text, made once for all pages that watch: each on its own, they would keep the state's lock from the
/// requests. Threads: hold the state's lock.
class PhoneBoard {
public:
    explicit PhoneBoard(Backend& backend) : backend_(backend) {}

    const std::string& text();

private:
    Backend& backend_;
    std::string text_;
    std::int64_t version_ = -1; ///< of the state when it was made
    std::chrono::steady_clock::time_point made_;
};

/// Tells a page what changes, as server-sent events (https://html.spec.whatwg.org/multipage/server-sent-events.html):
/// the whole view at once and after every change. `backend` must outlive the answer.
Answer watchPhone(Backend& backend, std::shared_ptr<PhoneBoard> board);

} // namespace vorn::sandbox
