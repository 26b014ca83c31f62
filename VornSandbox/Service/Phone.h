#pragma once

#include "VornSandbox/Service/Accounts.h"
#include "VornSandbox/Service/Archive.h"
#include "VornSandbox/Service/Call.h"
#include "VornSandbox/Service/State.h"
#include "VornSandbox/Service/Submissions.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace vorn::sandbox {

/// Serves the page that plays the phone, at /, with its changes and the messages it shows. Threads: any.
class Phone {
public:
    Phone(State& state, const Accounts& accounts, Submissions& submissions)
        : state_(state), accounts_(accounts), submissions_(submissions)
    {
    }
    Phone(Phone&&) = delete;

    std::vector<Route> routes();

private:
    class Watch;

    Answer watch();
    Answer messages(const Call& call);
    const std::string& view();

    State& state_;
    const Accounts& accounts_;
    Submissions& submissions_;

    // The view as text, built once for all watching pages: building it for each would keep requests waiting for the
    // state's lock, which guards it.
    std::string view_;
    std::int64_t version_ = -1; ///< of the state when the view was built
    std::chrono::steady_clock::time_point made_;

    std::mutex archivesMutex_; ///< guards the open archives
    std::map<std::string, MessagePages> archives_;
};

} // namespace vorn::sandbox
