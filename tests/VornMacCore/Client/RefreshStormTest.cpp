#include "Platform/Async/Suspend.h"
#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "VornMacCore/Client/VornAPI.h"
#include "tests/support/service/HeldHTTPSession.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/Started.h"

#include <gtest/gtest.h>

#include <map>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace vorn {
namespace {

using testing::adasSession;
using testing::Started;

constexpr int threadCount = 5;
constexpr int callsOfEachThread = 2;
constexpr int callers = threadCount * callsOfEachThread;
constexpr int rounds = 1000;

/// A service that refuses the ten calls of each round together, as soon as all ten have arrived: on the thread of the
/// last one, while the others wait on theirs. A call is identified by its submission, "r<round>c<caller>".
class RefusingService final : public HTTPSession {
public:
    Async<HTTPResponse> send(HTTPRequest request) override { return handle(this, std::move(request)); }

    int refreshes() const { return refreshes_; }
    /// The mistakes found.
    const std::set<std::string>& complaints() const { return complaints_; }
    /// The tokens with which each round's calls were repeated.
    const std::map<std::string, std::multiset<std::string>>& retries() const { return retries_; }

private:
    static Async<HTTPResponse> handle(RefusingService* self, HTTPRequest request)
    {
        co_return co_await suspend<HTTPResponse>([self, &request](Resume<HTTPResponse> resume) -> CancelAction {
            self->take(request, std::move(resume));
            return {};
        });
    }

    void take(const HTTPRequest& request, Resume<HTTPResponse> resume)
    {
        const std::lock_guard lock(mutex_);
        if (request.method == HTTPRequest::Method::post) {
            resume(renewed(testing::bodyTextOf(request)));
        } else if (const std::string call = lastPart(request.url.path()); seen_.insert(call).second) {
            refuseTogether(std::move(resume));
        } else {
            retries_[call.substr(0, call.find('c'))].insert(request.headers.back().second);
            resume(HTTPResponse{200, {}, testing::submissionStatusJSON});
        }
    }

    HTTPResponse renewed(const std::string& body)
    {
        if (body != R"({"refreshToken":")" + adasSession(1 + refreshes_).refreshToken + R"("})")
            complaints_.insert("a used refresh token came: " + body);
        ++refreshes_;
        return {200, {}, testing::tokenPairJSON(adasSession(1 + refreshes_))};
    }

    void refuseTogether(Resume<HTTPResponse> resume)
    {
        held_.push_back(std::move(resume));
        if (held_.size() < callers) return;
        for (const auto& each : std::exchange(held_, {})) each(HTTPResponse{401, {}, ""});
    }

    static std::string lastPart(const std::string& path) { return path.substr(path.rfind('/') + 1); }

    std::mutex mutex_; ///< guards what follows
    std::vector<Resume<HTTPResponse>> held_;
    std::set<std::string> seen_;
    std::map<std::string, std::multiset<std::string>> retries_;
    std::set<std::string> complaints_;
    int refreshes_ = 0;
};

void call(const VornAPI& api, int thread)
{
    MainContext own;
    for (int round = 0; round < rounds; ++round) {
        std::vector<Started<SubmissionStatus>> calls;
        for (int each = 0; each < callsOfEachThread; ++each) {
            const int caller = thread * callsOfEachThread + each;
            calls.emplace_back(own, api.submission("r" + std::to_string(round) + "c" + std::to_string(caller)));
        }
        for (const auto& started : calls) started.result(own);
    }
}

TEST(RefreshStorm, OfTenCallsOnFiveThreadsBuysOnePairOfTokensARound)
{
    const auto service = std::make_shared<RefusingService>();
    const auto tokens = std::make_shared<InMemoryTokenStore>(adasSession(1));
    const VornAPI api({APIConfiguration::productionBaseURL()}, service, tokens);

    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) threads.emplace_back([&api, thread] { call(api, thread); });
    for (auto& thread : threads) thread.join();

    EXPECT_EQ(service->refreshes(), rounds);
    EXPECT_TRUE(service->complaints().empty()) << *service->complaints().begin();
    EXPECT_EQ(tokens->load(), adasSession(1 + rounds));
    ASSERT_EQ(service->retries().size(), rounds);
    for (int round = 0; round < rounds; ++round) {
        const auto& used = service->retries().at("r" + std::to_string(round));
        EXPECT_EQ(used.size(), callers);
        EXPECT_EQ(used.count("Bearer " + adasSession(2 + round).token), callers) << "round " << round;
    }
}

} // namespace
} // namespace vorn
