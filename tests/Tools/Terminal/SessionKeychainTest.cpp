#include "Tools/Terminal/SessionKeychain.h"
#include "Tools/Terminal/CommandFailure.h"
#include "tests/Platform/Keychain/InMemoryKeychain.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

const KeychainItem session{"app.vorn.test", "desktop-session"};

class RefusingKeychain final : public testing::InMemoryKeychain {
public:
    explicit RefusingKeychain(std::int32_t status) : status_(status) {}
    std::optional<std::string> read(const KeychainItem& /*item*/) override { throw KeychainError(status_); }

private:
    std::int32_t status_;
};

TEST(SessionKeychain, TellsWhetherAnythingIsKept)
{
    const auto kept = std::make_shared<testing::InMemoryKeychain>();
    const SessionKeychain keychain(kept, session);
    EXPECT_FALSE(keychain.holdsSession(""));
    EXPECT_NO_THROW(keychain.requireReachable(""));
    kept->add(session, "{}", "label"); // no session can be read from it, but it exists
    EXPECT_TRUE(keychain.holdsSession(""));
}

TEST(SessionKeychain, SaysWhatIsWrongWithTheKeychain)
{
    struct Case {
        std::int32_t status;
        const char* text;
    };
    for (const Case& each :
         {Case{KeychainError::notAvailable, "There is no keychain here, or it does not answer. So what."},
          Case{KeychainError::interactionNotAllowed, "The keychain is locked. So what."},
          Case{KeychainError::userCanceled, "The keychain was not unlocked. So what."},
          Case{KeychainError::authFailed, "The keychain denies Vorn access. So what."}}) {
        const SessionKeychain keychain(std::make_shared<RefusingKeychain>(each.status), session);
        try {
            keychain.requireReachable("So what.");
            ADD_FAILURE() << each.text;
        } catch (const CommandFailure& failure) {
            EXPECT_EQ(failure, CommandFailure(TerminalStatus::keychain, each.text));
        }
    }
}

} // namespace
} // namespace vorn
