#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "VornMacCore/Client/VornAPI.h"
#include "tests/support/service/HeldHTTPSession.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/ServiceFixture.h"

#include <gmock/gmock.h>

#include <functional>
#include <utility>

namespace vorn {
namespace {

using testing::adasSession;
using testing::belasSession;
using ::testing::ElementsAre;
using testing::HeldHTTPSession;
using testing::Started;

constexpr auto stateOnce = "GET /api/v1/desktop/nimbrel, Bearer token-canary-1";
constexpr auto stateAgain = "GET /api/v1/desktop/nimbrel, Bearer token-canary-2";
constexpr auto refresh = "POST /api/v1/auth/desktop/refresh";

/// A store in which something happens between a read and its reader's next step.
class InterleavingStore final : public TokenStore {
public:
    /// Called once, after the next session has been read and before it is returned.
    std::function<void()> afterNextRead;

    std::optional<StoredSession> load() override
    {
        auto session = kept_.load();
        if (const auto meanwhile = std::exchange(afterNextRead, nullptr)) meanwhile();
        return session;
    }
    void save(const StoredSession& session) override { kept_.save(session); }
    void clear() noexcept override { kept_.clear(); }

private:
    InMemoryTokenStore kept_{adasSession(1)};
};

/// Two callers with a context each, so that the test decides which of them runs.
class RefreshRace : public ::testing::Test {
protected:
    ~RefreshRace() override
    {
        second_.shutDown();
        first_.shutDown();
    }

    /// Both calls are refused; the first one's refresh (request 2) is under way, and the second caller does not know
    /// yet.
    void refuseBoth()
    {
        first_.runUntilIdle();
        second_.runUntilIdle();
        http_->answer(0, 401);
        first_.runUntilIdle();
        http_->answer(1, 401);
    }
    void endRefresh(int status)
    {
        http_->answer(2, status, testing::tokenPairJSON(adasSession(2)));
        first_.runUntilIdle();
    }

    std::shared_ptr<HeldHTTPSession> http_ = std::make_shared<HeldHTTPSession>();
    std::shared_ptr<InterleavingStore> tokens_ = std::make_shared<InterleavingStore>();
    MainContext first_, second_;
    VornAPI api_{{APIConfiguration::productionBaseURL()}, http_, tokens_};
};

TEST_F(RefreshRace, OffersNoUsedTokenWhenTheStoreWasReadJustBeforeARefreshEnded)
{
    const Started fast(first_, api_.nimbrelState());
    const Started slow(second_, api_.nimbrelState());
    refuseBoth();
    tokens_->afterNextRead = [this] { endRefresh(200); };
    second_.runUntilIdle();
    EXPECT_THAT(http_->summaries(), ElementsAre(stateOnce, stateOnce, refresh, stateAgain, stateAgain));

    http_->answer(3, 200, testing::nimbrelStateJSON);
    http_->answer(4, 200, testing::nimbrelStateJSON);
    EXPECT_EQ(fast.result(first_), testing::sampleNimbrelState());
    EXPECT_EQ(slow.result(second_), testing::sampleNimbrelState());
    EXPECT_EQ(tokens_->load(), adasSession(2));
}

TEST_F(RefreshRace, AsksNobodyAgainWhenTheStoreWasReadJustBeforeARefusedRefreshEnded)
{
    const Started fast(first_, api_.nimbrelState());
    const Started slow(second_, api_.nimbrelState());
    refuseBoth();
    tokens_->afterNextRead = [this] { endRefresh(403); };
    second_.runUntilIdle();
    EXPECT_THAT(http_->summaries(), ElementsAre(stateOnce, stateOnce, refresh));
    EXPECT_EQ(testing::errorOf<APIError>(fast), APIError(APIError::SessionExpired{}));
    EXPECT_EQ(testing::errorOf<APIError>(slow), APIError(APIError::SessionChanged{}));
}

TEST_F(RefreshRace, SendsNoTokenOfAUserWhoWasReplacedJustAfterTheStoreWasRead)
{
    const Started fast(first_, api_.nimbrelState());
    const Started slow(second_, api_.nimbrelState());
    refuseBoth();
    tokens_->afterNextRead = [this] {
        endRefresh(200);
        tokens_->save(belasSession());
    };
    second_.runUntilIdle();
    EXPECT_THAT(http_->summaries(), ElementsAre(stateOnce, stateOnce, refresh, stateAgain));
    EXPECT_EQ(testing::errorOf<APIError>(slow), APIError(APIError::SessionChanged{}));
    EXPECT_EQ(tokens_->load(), belasSession());
}

TEST_F(RefreshRace, JoinsARefreshThatIsUnderWay)
{
    const Started fast(first_, api_.nimbrelState());
    const Started slow(second_, api_.nimbrelState());
    refuseBoth();
    second_.runUntilIdle();
    endRefresh(200);
    second_.runUntilIdle();
    EXPECT_THAT(http_->summaries(), ElementsAre(stateOnce, stateOnce, refresh, stateAgain, stateAgain));
    EXPECT_EQ(http_->body(2), R"({"refreshToken":"refresh-canary-1"})");
}

} // namespace
} // namespace vorn
