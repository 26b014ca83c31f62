#include "Tools/Terminal/TimeLimit.h"

#include "Platform/Async/Suspend.h"

#include <utility>

namespace vorn {
namespace {

Async<> tellEnd(Async<> work, Resume<bool> resume, bool answer)
{
    co_await std::move(work);
    resume(answer);
}

} // namespace

Async<bool> endsWithin(MainContext* context, Clock* clock, Clock::Duration limit, Async<> work)
{
    Task working;
    Task waiting;
    const auto race = [&](const Resume<bool>& resume) -> CancelAction {
        working = Task(*context, tellEnd(std::move(work), resume, true));
        waiting = Task(*context, tellEnd(clock->sleep(limit), resume, false));
        return {};
    };
    co_return co_await suspend<bool>(race);
}

} // namespace vorn
