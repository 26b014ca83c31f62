#include "Platform/Async/BackgroundPool.h"
#include "VornMacCore/Client/RememberingTokenStore.h"
#include "VornMacCore/Client/VornAPI.h"
#include "tests/support/service/ServiceAnswers.h"
#include "tests/support/service/ServiceFixture.h"

#include <gmock/gmock.h>

#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <utility>

namespace vorn {
namespace {

using testing::adasSession;
using testing::Answer;
using testing::belasSession;
using ::testing::ElementsAre;
using testing::Exchange;
using testing::ServiceFixture;

const APIError sessionExpired(APIError::SessionExpired{});
const APIError sessionChanged(APIError::SessionChanged{});

/// The user's keychain, which other processes change, behind a store that remembers the session in this process.
class SharedKeychain : public ::testing::Test {
protected:
    SharedKeychain() { fix_.tokens->save(adasSession(1)); }

    void refuse() { fix_.server.answer({.status = 401}); }
    void grantPair(int number) { fix_.server.answer(Answer::json(200, testing::tokenPairJSON(adasSession(number)))); }
    void answerState() { fix_.server.answer(Answer::json(200, testing::nimbrelStateJSON)); }
    testing::ServiceRequest state(int number) const
    {
        return fix_.get("desktop/nimbrel").bearer(adasSession(number).token);
    }
    testing::ServiceRequest refresh(int number) const { return fix_.refresh(adasSession(number)); }

    ServiceFixture fix_;
    std::shared_ptr<RememberingTokenStore> remembering_ = std::make_shared<RememberingTokenStore>(fix_.tokens);
    VornAPI api_{configurationOf(fix_.server), fix_.http, remembering_};
};

TEST_F(SharedKeychain, IsReadAgainBeforeATokenIsUsedUp)
{
    EXPECT_EQ(remembering_->load(), adasSession(1));
    fix_.tokens->save(adasSession(2)); // by another process
    refuse();
    answerState();
    EXPECT_EQ(fix_.run(api_.nimbrelState()), testing::sampleNimbrelState());
    EXPECT_THAT(fix_.requests(), ElementsAre(state(1), state(2)));
}

TEST_F(SharedKeychain, KeepsTheSessionOfAProcessThatWasFasterToRenewIt)
{
    refuse();
    fix_.server.script([this](Exchange& exchange) {
        exchange.readWholeBody();
        fix_.tokens->save(adasSession(2)); // by another process
        exchange.answer({.status = 401});
    });
    answerState();
    EXPECT_EQ(fix_.run(api_.nimbrelState()), testing::sampleNimbrelState());
    EXPECT_THAT(fix_.requests(), ElementsAre(state(1), refresh(1), state(2)));
    EXPECT_EQ(fix_.tokens->load(), adasSession(2));
}

TEST_F(SharedKeychain, KeepsTheSessionOfAnotherUserWhoLinkedInAnotherProcess)
{
    EXPECT_EQ(remembering_->load(), adasSession(1));
    fix_.tokens->save(belasSession());
    refuse();
    EXPECT_EQ(fix_.apiError(api_.nimbrelState()), sessionChanged);
    EXPECT_THAT(fix_.requests(), ElementsAre(state(1)));
    EXPECT_EQ(fix_.tokens->load(), belasSession());
}

TEST_F(SharedKeychain, LosesASessionThatTheServiceRefusesToRenew)
{
    refuse();
    refuse();
    EXPECT_EQ(fix_.apiError(api_.nimbrelState()), sessionExpired);
    EXPECT_EQ(fix_.tokens->load(), std::nullopt);
    EXPECT_EQ(remembering_->load(), std::nullopt);
}

TEST_F(SharedKeychain, KeepsTheSessionThatReplacedATwiceRefusedOne)
{
    refuse();
    grantPair(2);
    fix_.server.script([this](Exchange& exchange) {
        fix_.tokens->save(adasSession(3)); // by another process
        exchange.answer({.status = 401});
    });
    EXPECT_EQ(fix_.apiError(api_.nimbrelState()), sessionExpired);
    EXPECT_EQ(fix_.tokens->load(), adasSession(3));
}

class FullStore final : public TokenStore {
public:
    std::optional<StoredSession> load() override { return adasSession(1); }
    void save(const StoredSession& /*session*/) override { throw std::domain_error("full"); }
    void clear() noexcept override {}
};

TEST_F(SharedKeychain, ThatCannotKeepARenewedSessionCostsNothingInThisRun)
{
    const VornAPI api(configurationOf(fix_.server), fix_.http,
                      std::make_shared<RememberingTokenStore>(std::make_shared<FullStore>()));
    refuse();
    grantPair(2);
    answerState();
    answerState();
    EXPECT_EQ(fix_.run(api.nimbrelState()), testing::sampleNimbrelState());
    EXPECT_EQ(fix_.run(api.nimbrelState()), testing::sampleNimbrelState());
    EXPECT_THAT(fix_.requests(), ElementsAre(state(1), refresh(1), state(2), state(2)));
    EXPECT_THAT(fix_.log.lines(), ElementsAre("[api] keychain save failed: full"));
}

/// A keychain that records the threads that wait for it.
class WatchedStore final : public TokenStore {
public:
    std::optional<StoredSession> load() override
    {
        note();
        return store_.load();
    }
    void save(const StoredSession& session) override
    {
        note();
        store_.save(session);
    }
    void clear() noexcept override
    {
        note();
        store_.clear();
    }
    /// The threads that have waited since the last call.
    std::set<std::thread::id> threads()
    {
        const std::lock_guard lock(lock_);
        return std::exchange(threads_, {});
    }

private:
    void note()
    {
        const std::lock_guard lock(lock_);
        threads_.insert(std::this_thread::get_id());
    }

    std::mutex lock_; ///< guards threads_
    std::set<std::thread::id> threads_;
    InMemoryTokenStore store_{adasSession(1)};
};

TEST_F(SharedKeychain, IsWaitedForInTheBackground)
{
    BackgroundPool pool;
    const auto watched = std::make_shared<WatchedStore>();
    const auto remembering = std::make_shared<RememberingTokenStore>(watched);
    const VornAPI api(configurationOf(fix_.server), fix_.http, remembering, &pool);
    remembering->load();
    watched->threads();
    const auto expectBackgroundOnly = [&] {
        const auto threads = watched->threads();
        EXPECT_FALSE(threads.empty());
        EXPECT_FALSE(threads.contains(std::this_thread::get_id()));
    };
    refuse();
    grantPair(2);
    answerState();
    EXPECT_EQ(fix_.run(api.nimbrelState()), testing::sampleNimbrelState());
    expectBackgroundOnly();
    refuse();
    grantPair(3);
    refuse();
    EXPECT_EQ(fix_.apiError(api.nimbrelState()), sessionExpired);
    expectBackgroundOnly();
    EXPECT_EQ(watched->load(), std::nullopt);
    api.adopt(adasSession(4));
    watched->threads();
    refuse();
    refuse();
    EXPECT_EQ(fix_.apiError(api.nimbrelState()), sessionExpired);
    expectBackgroundOnly();
    EXPECT_EQ(watched->load(), std::nullopt);
}

TEST_F(SharedKeychain, MayServeTwoClientsThatDoNotKnowOfEachOther)
{
    const VornAPI other(configurationOf(fix_.server), fix_.http, std::make_shared<RememberingTokenStore>(fix_.tokens));
    refuse();
    grantPair(2);
    answerState();
    EXPECT_EQ(fix_.run(api_.nimbrelState()), testing::sampleNimbrelState());
    answerState();
    EXPECT_EQ(fix_.run(other.nimbrelState()), testing::sampleNimbrelState());
    EXPECT_THAT(fix_.requests(), ElementsAre(state(1), refresh(1), state(2), state(2)));
}

} // namespace
} // namespace vorn
