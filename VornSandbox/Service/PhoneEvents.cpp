#include "VornSandbox/Service/PhoneEvents.h"

#include "VornSandbox/Service/PhoneView.h"

#include <chrono>
#include <memory>
#include <string>
#include <utility>

namespace vorn::sandbox {
namespace {

using Steady = std::chrono::steady_clock;

/// Codes expire and reviews go on by themselves: nobody says when, so the view is looked at so often.
constexpr auto glance = std::chrono::milliseconds(250);

/// A page that has gone is noticed only when something is written to it.
constexpr auto signOfLife = std::chrono::seconds(5);

class Watch {
public:
    Watch(Backend& backend, std::shared_ptr<PhoneBoard> board) : backend_(backend), board_(std::move(board)) {}

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
        if (board_->text() == shown_) backend_.state.waitForChange(lock, glance);
        return board_->text();
    }

    Backend& backend_;
    std::shared_ptr<PhoneBoard> board_;
    std::string shown_;
    Steady::time_point written_ = Steady::now();
};

} // namespace

const std::string& PhoneBoard::text()
{
    const auto now = Steady::now();
    const std::int64_t version = backend_.state.version();
    if (version != version_ || now - made_ >= glance) {
        // Names come from the Mac and need not be well-formed.
        text_ = phoneView(backend_).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
        version_ = version;
        made_ = now;
    }
    return text_;
}

Answer watchPhone(Backend& backend, std::shared_ptr<PhoneBoard> board)
{
    const auto watch = std::make_shared<Watch>(backend, std::move(board));
    return {.contentType = "text/event-stream",
            .stream = [watch](const Answer::Write& write) { return watch->step(write); }};
}

} // namespace vorn::sandbox
