#include "VornMacCore/Client/RememberingTokenStore.h"

#include "Platform/Keychain/KeychainError.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <future>
#include <latch>
#include <thread>

namespace vorn {
namespace {

const StoredSession ada{"token-canary-1", "refresh-canary-1", "user-ada", "Ada"};
const StoredSession bela{"token-canary-2", "refresh-canary-2", "user-bela", "Béla"};

bool isAdas(const StoredSession& session)
{
    return session.userId == "user-ada";
}

/// A store that counts and can be told to fail.
class CountingStore final : public TokenStore {
public:
    std::optional<StoredSession> session;
    bool refusesToSave = false;
    bool keepsWhenCleared = false;
    std::atomic<int> loads = 0;
    int saves = 0;
    int clears = 0;
    std::optional<KeychainError> refusal; ///< thrown by every `restore`

    std::optional<StoredSession> restore() override
    {
        if (refusal) throw KeychainError(*refusal);
        return load();
    }
    std::optional<StoredSession> load() override
    {
        ++loads;
        return session;
    }
    void save(const StoredSession& newer) override
    {
        ++saves;
        if (refusesToSave) throw KeychainError(KeychainError::notAvailable);
        session = newer;
    }
    void clear() noexcept override
    {
        ++clears;
        if (!keepsWhenCleared) session.reset();
    }
};

class RememberingTokenStoreTest : public ::testing::Test {
protected:
    std::shared_ptr<CountingStore> kept_ = std::make_shared<CountingStore>();
    RememberingTokenStore store_{kept_};
};

TEST_F(RememberingTokenStoreTest, AnswersAtOnceWhenItHasRestoredASession)
{
    EXPECT_FALSE(store_.answersAtOnce());
    EXPECT_EQ(store_.restore(), std::nullopt);
    EXPECT_FALSE(store_.answersAtOnce()) << "a keychain may be unlocked later";
    kept_->session = ada;
    EXPECT_EQ(store_.restore(), ada);
    EXPECT_TRUE(store_.answersAtOnce());
    kept_->refusal = KeychainError(KeychainError::userCanceled);
    EXPECT_EQ(store_.restore(), ada);
    EXPECT_EQ(kept_->loads, 2);
}

TEST_F(RememberingTokenStoreTest, SaysWhyItRestoresNothing)
{
    kept_->refusal = KeychainError(KeychainError::userCanceled);
    EXPECT_THROW(store_.restore(), KeychainError);
    kept_->refusal.reset();
    kept_->session = ada;
    EXPECT_EQ(store_.restore(), ada);
}

TEST_F(RememberingTokenStoreTest, AsksTheStoreBelowOnce)
{
    kept_->session = ada;
    EXPECT_EQ(store_.load(), ada);
    EXPECT_EQ(store_.load(), ada);
    EXPECT_EQ(kept_->loads, 1);
}

TEST_F(RememberingTokenStoreTest, ClearsWhatItRemembersThoughTheStoreBelowFails)
{
    kept_->session = ada;
    ASSERT_EQ(store_.load(), ada);
    kept_->session.reset(); // the keychain is locked, say
    EXPECT_EQ(store_.clearIf(isAdas), std::nullopt);
    kept_->session = ada;
    EXPECT_EQ(store_.load(), std::nullopt);
}

TEST_F(RememberingTokenStoreTest, LeavesWhatAnotherProcessSavedInPlaceOfWhatMatches)
{
    kept_->session = ada;
    ASSERT_EQ(store_.load(), ada);
    kept_->session = bela; // by another process
    EXPECT_EQ(store_.clearIf(isAdas), bela);
    EXPECT_EQ(kept_->session, bela);
    EXPECT_EQ(store_.load(), bela);
}

TEST_F(RememberingTokenStoreTest, ClearsWhatMatchesWhereOnlyItKnowsTheSession)
{
    kept_->session = bela; // stays: the save below fails
    kept_->refusesToSave = true;
    EXPECT_THROW(store_.save(ada), KeychainError);
    EXPECT_EQ(store_.clearIf([](const StoredSession& session) { return session == bela; }), ada);
    EXPECT_EQ(store_.clearIf(isAdas), std::nullopt);
    EXPECT_EQ(store_.load(), std::nullopt);
    EXPECT_EQ(kept_->session, std::nullopt) << "it was older";
}

TEST_F(RememberingTokenStoreTest, AsksAgainForASessionThatIsNotThere)
{
    EXPECT_EQ(store_.load(), std::nullopt);
    kept_->session = ada; // the keychain was locked
    EXPECT_EQ(store_.load(), ada);
    EXPECT_EQ(kept_->loads, 2);
}

TEST_F(RememberingTokenStoreTest, ReloadsWhatAnotherProcessSaved)
{
    kept_->session = ada;
    EXPECT_EQ(store_.load(), ada);
    kept_->session = bela;
    EXPECT_EQ(store_.load(), ada);
    EXPECT_EQ(store_.reload(), bela);
    EXPECT_EQ(store_.load(), bela);
}

TEST_F(RememberingTokenStoreTest, ReloadsNothingOlderThanWhatCouldNotBeKept)
{
    kept_->session = ada;
    kept_->refusesToSave = true;
    EXPECT_THROW(store_.save(bela), KeychainError);
    EXPECT_EQ(store_.reload(), bela);
}

TEST_F(RememberingTokenStoreTest, RemembersASessionThatCannotBeReadAgain)
{
    store_.save(ada);
    kept_->session.reset(); // the keychain was locked
    EXPECT_EQ(store_.reload(), ada);
    EXPECT_EQ(store_.load(), ada);
}

TEST_F(RememberingTokenStoreTest, ReloadsNothingThatWasCleared)
{
    kept_->session = ada;
    kept_->keepsWhenCleared = true;
    store_.clear();
    EXPECT_EQ(store_.reload(), std::nullopt);
}

/// A store whose saves last until the test ends them.
class SlowStore final : public TokenStore {
public:
    std::promise<void> began, mayEnd;

    std::optional<StoredSession> load() override { return std::nullopt; }
    void save(const StoredSession& /*session*/) override
    {
        began.set_value();
        mayEnd.get_future().wait();
    }
    void clear() noexcept override {}
};

TEST(RememberingTokenStore, LoadsWithoutWaitingForASave)
{
    const auto kept = std::make_shared<SlowStore>();
    RememberingTokenStore store(kept);
    std::thread saver([&] { store.save(ada); });
    kept->began.get_future().wait();
    EXPECT_EQ(store.load(), ada);
    kept->mayEnd.set_value();
    saver.join();
}

TEST_F(RememberingTokenStoreTest, KeepsWhatItSavesInTheStoreBelow)
{
    store_.save(ada);
    EXPECT_EQ(kept_->session, ada);
    EXPECT_EQ(store_.load(), ada);
    EXPECT_EQ(kept_->loads, 0);
}

TEST_F(RememberingTokenStoreTest, RemembersASessionThatCouldNotBeKept)
{
    kept_->session = ada;
    kept_->refusesToSave = true;
    EXPECT_THROW(store_.save(bela), KeychainError);
    EXPECT_EQ(store_.load(), bela);
    EXPECT_EQ(kept_->saves, 1);
}

TEST_F(RememberingTokenStoreTest, ForgetsEvenIfTheStoreBelowCannot)
{
    kept_->session = ada;
    kept_->keepsWhenCleared = true;
    EXPECT_EQ(store_.load(), ada);
    store_.clear();
    EXPECT_EQ(kept_->clears, 1);
    EXPECT_EQ(store_.load(), std::nullopt);
}

TEST_F(RememberingTokenStoreTest, ForgetsWhatItNeverLoaded)
{
    kept_->session = ada;
    kept_->keepsWhenCleared = true;
    store_.clear();
    EXPECT_EQ(store_.load(), std::nullopt);
    EXPECT_EQ(kept_->loads, 0);
}

TEST_F(RememberingTokenStoreTest, AnswersManyThreadsWithOneSession)
{
    kept_->session = ada;
    std::atomic<int> wrong = 0;
    {
        std::array<std::thread, 4> threads;
        for (auto& thread : threads) {
            thread = std::thread([this, &wrong] {
                for (int round = 0; round < 1000; ++round) wrong += store_.load() == ada ? 0 : 1;
            });
        }
        for (auto& thread : threads) thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(kept_->loads, 1);
}

/// Repeats each on a thread of its own. There is no third thread: by the locks that it takes after one and before the
/// other, it would order the two, and hide a missing lock from the thread sanitizer.
void repeatBeside(const std::function<void()>& one, const std::function<void()>& other)
{
    std::latch start(2);
    const auto repeat = [&start](const std::function<void()>& work) {
        start.arrive_and_wait();
        for (int round = 0; round < 1000; ++round) work();
    };
    std::thread beside([&] { repeat(other); });
    repeat(one);
    beside.join();
}

TEST_F(RememberingTokenStoreTest, KeepsThreadsApart)
{
    store_.save(ada);
    int wrong = 0;
    const auto check = [&wrong](const std::optional<StoredSession>& seen) {
        wrong += seen == ada || seen == bela ? 0 : 1;
    };
    const auto saveBoth = [this] {
        store_.save(bela);
        store_.save(ada);
    };
    const auto clearNothing = [this] {
        return store_.clearIf([](const StoredSession& session) { return session.userId.empty(); });
    };
    repeatBeside([&] { check(store_.load()); }, saveBoth);
    repeatBeside([&] { check(store_.reload()); }, saveBoth);
    repeatBeside([&] { check(clearNothing()); }, saveBoth);
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(store_.load(), ada);
    EXPECT_EQ(kept_->session, ada);
}

} // namespace
} // namespace vorn
