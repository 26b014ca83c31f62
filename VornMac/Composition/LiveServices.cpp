#include "VornMac/Composition/LiveServices.h"

#include "NimbrelExportKit/Messages/UsersDatabase.h"
#include "Platform/Base/BundleInfo.h"
#include "VornMac/Composition/OverrideKeys.h"
#include "VornMacCore/Client/APIConfiguration.h"
#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "VornMacCore/Client/KeychainTokenStore.h"
#include "VornMacCore/Client/RememberingTokenStore.h"
#include "VornMacCore/Wire/Application.h"

#include <utility>

namespace vorn {
namespace {

Log applicationLog()
{
    return {bundleIdentifier(), "app"};
}

std::shared_ptr<TokenStore> tokenStore(bool inKeychain)
{
    if (!inKeychain) return std::make_shared<InMemoryTokenStore>();
    const KeychainItem item = sessionItem();
    return std::make_shared<RememberingTokenStore>(std::make_shared<KeychainTokenStore>(item.service, item.account));
}

APIConfiguration configuration(const UserDefaults& defaults)
{
    return APIConfiguration::resolve(applicationBundle(), defaults.text(APIConfiguration::overrideDefaultsKey));
}

} // namespace

RunDefaults::RunDefaults(LayeredDefaults::Line line)
    : settings_(SettingsDefaults::forRun(line, bundleIdentifier(), applicationLog())),
      layered_(std::move(line), settings_)
{
}

std::filesystem::path messagesDatabase(const UserDefaults& defaults)
{
    const auto given = defaults.text(overrides::messagesDatabase);
    return given ? std::filesystem::path(*given) : usersMessagesDatabase();
}

bool keepsSession(const UserDefaults& defaults)
{
    return !defaults.boolean(overrides::forgetsSession);
}

KeychainItem sessionItem()
{
    return sessionItem(Keychain::keepsProgramsApart(), mainBundleText("CFBundleIdentifier").has_value());
}

KeychainItem sessionItem(bool keepsProgramsApart, bool isInBundle)
{
    const bool isAlone = keepsProgramsApart && !isInBundle;
    return {bundleIdentifier() + (isAlone ? ".terminal" : ""), KeychainTokenStore::sessionAccount};
}

LiveServices::LiveServices(UserDefaults& defaults, std::filesystem::path messagesDatabase, Options options)
    : defaults_(defaults), messagesDatabase_(std::move(messagesDatabase)),
      temporaryItems_(FileManager::standard().temporaryDirectory(), applicationLog()),
      http_(HTTPSession::make({.proxies = SystemProxy::ofSystem()})), tokens_(tokenStore(options.keepsSession)),
      api_(configuration(defaults), http_, tokens_, &pool_),
      workspace_(std::move(options.application), std::move(options.quit))
{
}

AppServices LiveServices::forModel(MainContext& context)
{
    return {.context = &context,
            .clock = &clock_,
            .background = &pool_,
            .api = api_,
            .tokens = tokens_,
            .transfer = http_,
            .defaults = &defaults_,
            .workspace = &workspace_,
            .files = &temporaryItems_.files(),
            .messagesDatabase = messagesDatabase_,
            .bundle = applicationBundle(),
            .patient = &patient_};
}

} // namespace vorn
