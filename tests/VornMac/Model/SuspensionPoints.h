#pragma once

#include "tests/VornMac/Model/ModelFixture.h"

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace vorn::testing {

/// The service's reply to a waiting request.
enum class Reply {
    success,
    notAuthorized, ///< 401
};

/// A place at which a job of the model waits.
struct SuspensionPoint {
    enum class Flow { link, prefetch, access, scan, upload, review };

    std::string name;
    Flow flow;
    std::function<void(ModelFixture&)> reach; ///< leads a new model to this place
    std::string awaited = {};                 ///< the request; empty if the job sleeps or works in the background
    std::string success = {};                 ///< the answer of a success
    bool opened = false;                      ///< a submission is open, which a cancelled upload must abort
};

const std::vector<SuspensionPoint>& suspensionPoints();
void PrintTo(const SuspensionPoint& point, std::ostream* out); // NOLINT(readability-identifier-naming): GoogleTest's

/// A user's action in a flow.
struct UserAction {
    std::string name;
    std::function<void(AppModel&)> run;
};

/// The ordinary ways to stop a flow's job: leave its step, or begin its work again.
std::vector<UserAction> cancelsOf(SuspensionPoint::Flow flow);

/// A model that waits at a suspension point.
class SuspendedModel {
public:
    explicit SuspendedModel(SuspensionPoint point);

    ModelFixture fix;

    /// Answers the request of the suspension point, even if the job no longer awaits it; then runs the background work
    /// and lets an hour pass.
    void answer(Reply reply);
    void answer(int status, const std::string& body);
    void fail(URLError::Code code);
    /// Only answers: runs no background work and lets no time pass.
    void answerOnly(int status, const std::string& body);

    bool waitsForTheService() const { return request_.has_value(); }
    /// Requests that were sent since the point was reached.
    std::vector<std::string> sentSince() const;

private:
    void letTimePass();

    SuspensionPoint point_;
    std::optional<std::size_t> request_;
    std::size_t sent_ = 0;
};

} // namespace vorn::testing
