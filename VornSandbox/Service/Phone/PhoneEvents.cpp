#include "VornSandbox/Service/Phone/PhoneEvents.h"

#include "VornSandbox/Service/Phone/PhoneView.h"

#include <chrono>
#include <memory>
#include <string>

namespace vorn::sandbox {
namespace {

using Steady = std::chrono::steady_clock;

/// Codes expire and reviews go on by themselves: nobody says when, so the view is looked at so often.
constexpr auto glance = std::chrono::milliseconds(250);

/// A page that has gone is noticed only when something is written to it.
constexpr auto signOfLife = std::chrono::seconds(5);

class Watch {
public:
    explicit Watch(Backend& backend) : backend_(backend) {}

    bool step(const Answer::Write& write)
    {
        backend_.submissions.settle();
        const std::string view = look();
        const auto now = Steady::now();
        if (view == shown_) {
            if (now - written_ < signOfLife) return true;
            written_ = now;
            return write(": still here\n\n");
        }
        shown_ = view;
        written_ = now;
        return write("data: " + view + "\n\n");
    }

private:
    /// The view as soon as it differs from what is shown, or after a glance.
    std::string look()
    {
        auto lock = backend_.state.lock();
        std::string view = text();
        if (view != shown_) return view;
        backend_.state.waitForChange(lock, glance);
        return text();
    }
    std::string text() const
    {
        // Names come from the Mac and need not be well-formed.
        return phoneView(backend_).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    }

    Backend& backend_;
    std::string shown_;
    Steady::time_point written_ = Steady::now();
};

} // namespace

Answer watchPhone(Backend& backend)
{
    const auto watch = std::make_shared<Watch>(backend);
    return {.contentType = "text/event-stream",
            .stream = [watch](const Answer::Write& write) { return watch->step(write); }};
}

} // namespace vorn::sandbox
