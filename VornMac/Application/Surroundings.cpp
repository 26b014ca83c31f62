#include "VornMac/Application/Surroundings.h"

#include "NimbrelExportKit/Messages/UsersDatabase.h"
#include "VornMac/Defaults/OverrideKeys.h"
#include "VornMacCore/Application/Application.h"
#include "VornMacCore/Client/APIConfiguration.h"
#include "VornMacCore/Sessions/InMemoryTokenStore.h"
#include "VornMacCore/Sessions/KeychainTokenStore.h"
#include "VornMacCore/Sessions/RememberingTokenStore.h"

#include <utility>

namespace vorn {
namespace {

Log applicationLog()
{
    return {bundleIdentifier(), "app"};
}

/// Where the session is kept: in the keychain, or for a run beside the user's own, only as long as the process lives.
std::shared_ptr<TokenStore> tokenStore(const UserDefaults& defaults)
{
    if (defaults.boolean(overrides::forgetsSession)) return std::make_shared<InMemoryTokenStore>();
    return std::make_shared<RememberingTokenStore>(
        std::make_shared<KeychainTokenStore>(bundleIdentifier(), KeychainTokenStore::sessionAccount));
}

std::filesystem::path messagesDatabase(const UserDefaults& defaults)
{
    const auto given = defaults.text(overrides::messagesDatabase);
    return given ? std::filesystem::path(*given) : usersMessagesDatabase();
}

} // namespace

Surroundings::Surroundings(LayeredDefaults::Line line, const std::filesystem::path& executable,
                           std::function<void()> quit)
    : settings_(SettingsDefaults::forRun(line, bundleIdentifier(), applicationLog())),
      defaults_(std::move(line), settings_),
      temporaryItems_(FileManager::standard().temporaryDirectory(), applicationLog()), http_(HTTPSession::make()),
      tokens_(tokenStore(defaults_)), workspace_(applicationOf(executable), std::move(quit))
{
}

Surroundings::~Surroundings() = default;

AppServices Surroundings::services()
{
    const auto address =
        APIConfiguration::resolve(applicationBundle(), defaults_.text(APIConfiguration::overrideDefaultsKey));
    return {.context = &context(),
            .clock = &clock_,
            .background = &pool_,
            .api = VornAPI(address, http_, tokens_, &pool_),
            .tokens = tokens_,
            .transfer = http_,
            .defaults = &defaults_,
            .workspace = &workspace_,
            .files = &temporaryItems_.files(),
            .messagesDatabase = messagesDatabase(defaults_),
            .bundle = applicationBundle()};
}

} // namespace vorn
