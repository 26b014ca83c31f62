#include "tests/Platform/Keychain/KeychainContract.h"

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace vorn::testing {

using namespace std::string_literals;
using ::testing::Optional;

std::string nameOf(const ::testing::TestParamInfo<KeychainKind>& kind)
{
    return kind.param.name;
}

std::int32_t statusOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const KeychainError& error) {
        return error.status();
    }
    return 0;
}

namespace {

TEST_P(KeychainContract, HasNothingAtFirst)
{
    EXPECT_EQ(keychain().read(item_), std::nullopt);
}

TEST_P(KeychainContract, GivesBackWhatWasAdded)
{
    keychain().add(item_, "secret", "Vorn");
    EXPECT_THAT(keychain().read(item_), Optional("secret"s));
    EXPECT_THAT(keychain().read(item_), Optional("secret"s));
}

TEST_P(KeychainContract, KeepsBytesOfAnyKind)
{
    const std::vector<std::pair<std::string, std::string>> secrets = {
        {"NUL", "a\0b\0"s},
        {"NUL alone", "\0"s},
        {"not UTF-8", "\xFF\xFE\x80"},
        {"line breaks", "a\n\r\n"},
        {"large", std::string(100 * 1024, '\x81')},
    };
    for (const auto& [name, secret] : secrets) {
        SCOPED_TRACE(name);
        keychain().add(item_, secret, "Vorn");
        EXPECT_TRUE(keychain().read(item_) == secret);
        keychain().remove(item_);
    }
}

TEST_P(KeychainContract, KeepsAnEmptySecretAsOne)
{
    keychain().add(item_, "", "Vorn");
    EXPECT_THAT(keychain().read(item_), Optional(""s));
}

TEST_P(KeychainContract, RefusesASecondSecretForAnItem)
{
    keychain().add(item_, "first", "Vorn");
    EXPECT_EQ(statusOf([&] { keychain().add(item_, "second", "Vorn"); }), KeychainError::duplicateItem);
    EXPECT_THAT(keychain().read(item_), Optional("first"s));
}

TEST_P(KeychainContract, ReplacesByRemovingFirst)
{
    keychain().add(item_, "first", "Vorn");
    EXPECT_TRUE(keychain().remove(item_));
    EXPECT_EQ(keychain().read(item_), std::nullopt);
    keychain().add(item_, "second", "Vorn");
    EXPECT_THAT(keychain().read(item_), Optional("second"s));
}

TEST_P(KeychainContract, ReplacesInOneCall)
{
    keychain().replace(item_, "first", "Vorn");
    EXPECT_THAT(keychain().read(item_), Optional("first"s));
    keychain().replace(item_, "second", "Vorn");
    EXPECT_THAT(keychain().read(item_), Optional("second"s));
}

TEST_P(KeychainContract, RemovesASecretThatMatches)
{
    const auto is = [](std::string_view expected) {
        return [expected](std::string_view bytes) { return bytes == expected; };
    };
    EXPECT_EQ(keychain().removeIf(item_, is("")), std::nullopt);
    keychain().add(item_, "secret", "Vorn");
    EXPECT_THAT(keychain().removeIf(item_, is("other")), Optional("secret"s));
    EXPECT_THAT(keychain().read(item_), Optional("secret"s));
    EXPECT_EQ(keychain().removeIf(item_, is("secret")), std::nullopt);
    EXPECT_EQ(keychain().read(item_), std::nullopt);
}

TEST_P(KeychainContract, RemovesWhatIsNotThere)
{
    EXPECT_TRUE(keychain().remove(item_));
    EXPECT_EQ(keychain().read(item_), std::nullopt);
}

TEST_P(KeychainContract, LeavesOtherItemsAlone)
{
    const KeychainItem otherAccount{item_.service, "other"}, otherService{"com.example.other", item_.account};
    keychain().add(item_, "secret", "Vorn");
    EXPECT_EQ(keychain().read(otherAccount), std::nullopt);
    EXPECT_EQ(keychain().read(otherService), std::nullopt);
    keychain().add(otherAccount, "account", "Vorn");
    keychain().add(otherService, "service", "Vorn");
    keychain().remove(item_);
    EXPECT_THAT(keychain().read(otherAccount), Optional("account"s));
    EXPECT_THAT(keychain().read(otherService), Optional("service"s));
}

TEST_P(KeychainContract, TakesNamesOfAnyScript)
{
    const KeychainItem item{"com.example.vorn", "東京 \"Ada's\" \\ 😀"};
    keychain().add(item, "secret", "Vorn für Mac 😀");
    EXPECT_THAT(keychain().read(item), Optional("secret"s));
}

TEST_P(KeychainContract, RefusesNamesThatAreNoText)
{
    const KeychainItem item{"com.example.vorn", "\xFF"};
    EXPECT_EQ(statusOf([&] { keychain().add(item, "secret", "Vorn"); }), KeychainError::parameter);
    EXPECT_EQ(statusOf([&] { keychain().add(item_, "secret", "\xFF"); }), KeychainError::parameter);
    EXPECT_EQ(statusOf([&] { keychain().replace(item, "secret", "Vorn"); }), KeychainError::parameter);
    EXPECT_EQ(statusOf([&] { keychain().read(item); }), KeychainError::parameter);
    EXPECT_FALSE(keychain().remove(item));
}

} // namespace
} // namespace vorn::testing
