#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "VornMacCore/Client/KeychainTokenStore.h"
#include "VornMacCore/Client/RememberingTokenStore.h"
#include "tests/VornMacCore/Client/ScriptedKeychain.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace vorn {
namespace {

const StoredSession ada{"token-canary-1", "refresh-canary-1", "user-ada", "Ada"};
const StoredSession bela{"token-canary-2", "refresh-canary-2", "user-bela", "Béla"};

std::shared_ptr<TokenStore> keychainStore()
{
    return std::make_shared<KeychainTokenStore>("app.vorn.mac", "desktop-session",
                                                std::make_shared<testing::ScriptedKeychain>());
}

struct Kind {
    const char* name;
    std::function<std::shared_ptr<TokenStore>()> make;
};

std::ostream& operator<<(std::ostream& out, const Kind& kind)
{
    return out << kind.name;
}

class TokenStoreContract : public ::testing::TestWithParam<Kind> {
protected:
    std::shared_ptr<TokenStore> store_ = GetParam().make();
};

TEST_P(TokenStoreContract, HoldsNothingAtFirst)
{
    EXPECT_EQ(store_->load(), std::nullopt);
}

TEST_P(TokenStoreContract, GivesWhatWasSavedAsOftenAsAsked)
{
    store_->save(ada);
    EXPECT_EQ(store_->load(), ada);
    EXPECT_EQ(store_->load(), ada);
}

TEST_P(TokenStoreContract, ReplacesOneSessionByAnother)
{
    store_->save(ada);
    store_->save(bela);
    EXPECT_EQ(store_->load(), bela);
}

TEST_P(TokenStoreContract, HoldsNothingOnceCleared)
{
    store_->save(ada);
    store_->clear();
    EXPECT_EQ(store_->load(), std::nullopt);
    store_->clear();
    EXPECT_EQ(store_->load(), std::nullopt);
}

TEST_P(TokenStoreContract, TakesASessionAfterItWasCleared)
{
    store_->save(ada);
    store_->clear();
    store_->save(bela);
    EXPECT_EQ(store_->load(), bela);
}

TEST_P(TokenStoreContract, ClearsASessionThatMatchesAndGivesOneThatDoesNot)
{
    const auto isBelas = [](const StoredSession& session) { return session.userId == "user-bela"; };
    EXPECT_EQ(store_->clearIf(isBelas), std::nullopt);
    store_->save(ada);
    EXPECT_EQ(store_->clearIf(isBelas), ada);
    EXPECT_EQ(store_->load(), ada);
    store_->save(bela);
    EXPECT_EQ(store_->clearIf(isBelas), std::nullopt);
    EXPECT_EQ(store_->load(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    , TokenStoreContract,
    ::testing::Values(Kind{"InMemory", [] { return std::make_shared<InMemoryTokenStore>(); }},
                      Kind{"Keychain", keychainStore},
                      Kind{"Remembering", [] { return std::make_shared<RememberingTokenStore>(keychainStore()); }}),
    [](const auto& info) { return info.param.name; });

TEST(InMemoryTokenStore, BeginsWithTheSessionItIsGiven)
{
    EXPECT_EQ(InMemoryTokenStore(ada).load(), ada);
}

} // namespace
} // namespace vorn
