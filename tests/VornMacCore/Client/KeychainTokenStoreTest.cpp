#include "VornMacCore/Client/KeychainTokenStore.h"

#include "VornMacCore/Wire/JSONErrors.h"
#include "tests/VornMacCore/Client/ScriptedKeychain.h"
#include "tests/support/log/CapturedLog.h"

#include <gmock/gmock.h>

#include <ostream>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ScriptedKeychain;

constexpr auto adasJSON =
    R"({"token":"token-canary-1","refreshToken":"refresh-canary-1","userId":"user-ada","displayName":"Ada"})";

StoredSession ada()
{
    return {"token-canary-1", "refresh-canary-1", "user-ada", "Ada"};
}

class KeychainTokenStoreTest : public ::testing::Test {
protected:
    std::shared_ptr<ScriptedKeychain> keychain_ = std::make_shared<ScriptedKeychain>();
    KeychainTokenStore store_{"app.vorn.mac", KeychainTokenStore::sessionAccount, keychain_};
};

TEST_F(KeychainTokenStoreTest, LoadsTheSessionOfItsOwnItem)
{
    keychain_->secret = adasJSON;
    EXPECT_EQ(store_.load(), ada());
    EXPECT_THAT(keychain_->calls(), ElementsAre("read app.vorn.mac/desktop-session"));
}

TEST_F(KeychainTokenStoreTest, LoadsNothingFromAnEmptyKeychain)
{
    EXPECT_EQ(store_.load(), std::nullopt);
}

TEST_F(KeychainTokenStoreTest, LoadsNothingWhenTheKeychainDoesNotAnswer)
{
    keychain_->secret = adasJSON;
    for (const auto status : {KeychainError::notAvailable, KeychainError::authFailed, KeychainError::userCanceled}) {
        keychain_->readError = KeychainError(status);
        EXPECT_EQ(store_.load(), std::nullopt) << status;
    }
}

TEST_F(KeychainTokenStoreTest, RestoresTheSessionOrSaysWhyNot)
{
    EXPECT_FALSE(store_.answersAtOnce());
    EXPECT_EQ(store_.restore(), std::nullopt);
    keychain_->secret = "not a session";
    EXPECT_EQ(store_.restore(), std::nullopt);
    keychain_->secret = adasJSON;
    EXPECT_EQ(store_.restore(), ada());
    keychain_->readError = KeychainError(KeychainError::userCanceled);
    EXPECT_THROW(store_.restore(), KeychainError);
}

TEST_F(KeychainTokenStoreTest, LeavesWhatItCannotReadAlone)
{
    keychain_->secret = "not a session";
    EXPECT_EQ(store_.load(), std::nullopt);
    EXPECT_EQ(keychain_->secret, "not a session");
    EXPECT_THAT(keychain_->calls(), ElementsAre("read app.vorn.mac/desktop-session"));
}

TEST_F(KeychainTokenStoreTest, SavesByRemovingTheOldItemAndAddingANewOne)
{
    keychain_->secret = "the old one";
    store_.save(ada());
    EXPECT_EQ(keychain_->secret, adasJSON);
    EXPECT_THAT(keychain_->calls(), ElementsAre("remove app.vorn.mac/desktop-session",
                                                R"(add app.vorn.mac/desktop-session as "Vorn for Mac session")"));
}

TEST_F(KeychainTokenStoreTest, ReportsTheStatusOfARefusedAddAndLeavesNoItemBehind)
{
    keychain_->secret = adasJSON;
    keychain_->addError = KeychainError(-34018);
    try {
        store_.save(ada());
        FAIL() << "the save passed";
    } catch (const KeychainError& error) {
        EXPECT_EQ(error.status(), -34018);
    }
    EXPECT_EQ(keychain_->secret, std::nullopt);
    EXPECT_EQ(store_.load(), std::nullopt);
}

TEST_F(KeychainTokenStoreTest, ChangesNothingForASessionThatCannotBeWritten)
{
    keychain_->secret = adasJSON;
    EXPECT_THROW(store_.save({"token-canary-2", "refresh-canary-2", "user-ada", "\xFF"}), UnencodableJSON);
    EXPECT_EQ(keychain_->secret, adasJSON);
    EXPECT_THAT(keychain_->calls(), IsEmpty());
}

TEST_F(KeychainTokenStoreTest, ClearsByRemovingTheItem)
{
    keychain_->secret = adasJSON;
    store_.clear();
    EXPECT_EQ(keychain_->secret, std::nullopt);
    EXPECT_THAT(keychain_->calls(), ElementsAre("remove app.vorn.mac/desktop-session"));
}

TEST_F(KeychainTokenStoreTest, ClearsWhatMatchesInOneCall)
{
    keychain_->secret = adasJSON;
    EXPECT_EQ(store_.clearIf([](const StoredSession& session) { return session == ada(); }), std::nullopt);
    EXPECT_EQ(keychain_->secret, std::nullopt);
    EXPECT_THAT(keychain_->calls(), ElementsAre("remove what matches app.vorn.mac/desktop-session"));
}

TEST_F(KeychainTokenStoreTest, LogsThatItCouldNotSeeWhetherASessionMatches)
{
    const testing::CapturedLog log;
    keychain_->secret = adasJSON;
    keychain_->readError = KeychainError(KeychainError::notAvailable);
    EXPECT_EQ(store_.clearIf([](const StoredSession& /*session*/) { return true; }), std::nullopt);
    EXPECT_THAT(log.lines(), ElementsAre("[api] keychain clear failed: the session may still be there"));
    EXPECT_EQ(keychain_->secret, adasJSON);
}

TEST_F(KeychainTokenStoreTest, LogsASessionThatItCannotClear)
{
    const testing::CapturedLog log;
    keychain_->secret = adasJSON;
    keychain_->keepsWhatIsRemoved = true;
    store_.clear();
    EXPECT_THAT(log.lines(), ElementsAre("[api] keychain clear failed: the session may still be there"));
}

struct Undecodable {
    const char* what;
    std::string bytes;
};

std::ostream& operator<<(std::ostream& out, const Undecodable& secret)
{
    return out << secret.what;
}

class UndecodableSecret : public KeychainTokenStoreTest, public ::testing::WithParamInterface<Undecodable> {};

TEST_P(UndecodableSecret, LoadsAsNoSession)
{
    keychain_->secret = GetParam().bytes;
    EXPECT_EQ(store_.load(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    KeychainTokenStore, UndecodableSecret,
    ::testing::Values(Undecodable{"WithoutDisplayName", R"({"token":"t","refreshToken":"r","userId":"u"})"},
                      Undecodable{"Empty", ""}, Undecodable{"Bytes", std::string("\0\xFF\x01", 3)},
                      Undecodable{"BrokenOff", std::string(adasJSON).substr(0, 40)},
                      Undecodable{"WithMoreBehind", std::string(adasJSON) + "{}"}, Undecodable{"NoObject", "[1,2]"},
                      Undecodable{"TooDeep", R"({"x":)" + std::string(5000, '[') + std::string(5000, ']') + "}"},
                      Undecodable{"TooLarge", std::string(17 << 20, ' ') + adasJSON}),
    [](const auto& info) { return info.param.what; });

} // namespace
} // namespace vorn
