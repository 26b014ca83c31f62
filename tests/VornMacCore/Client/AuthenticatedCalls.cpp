#include "tests/VornMacCore/Client/AuthenticatedCalls.h"

#include <utility>

namespace vorn::testing {
namespace {

template <class Record>
Async<> withoutResult(Async<Record> work)
{
    co_await std::move(work);
}

} // namespace

const std::vector<AuthenticatedCall>& authenticatedCalls()
{
    static const std::vector<AuthenticatedCall> calls = {
        {"NimbrelState", [](const VornAPI& api) { return withoutResult(api.nimbrelState()); }},
        {"CreateSubmission",
         [](const VornAPI& api) { return withoutResult(api.createSubmission({"terms-1", 1, 1, std::nullopt})); }},
        {"PartUrls", [](const VornAPI& api) { return withoutResult(api.partUrls("sub-1", "asset-1", 1, 1)); }},
        {"CompleteAsset", [](const VornAPI& api) { return withoutResult(api.completeAsset("sub-1", "asset-1", {})); }},
        {"AbortSubmission", [](const VornAPI& api) { return withoutResult(api.abortSubmission("sub-1")); }},
        {"Submission", [](const VornAPI& api) { return withoutResult(api.submission("sub-1")); }},
    };
    return calls;
}

} // namespace vorn::testing
