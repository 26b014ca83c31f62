#include "tests/VornMac/Model/ModelFixture.h"

#include "tests/support/service/ServiceAnswers.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

namespace vorn::testing {

bool InMemoryDefaults::boolean(const std::string& key) const
{
    const auto found = booleans.find(key);
    return found != booleans.end() && found->second;
}

bool RecordingWorkspace::open(const std::string& url)
{
    calls.push_back("open " + url);
    return url != refused;
}

Notifications::Notifications(const AppModel& model)
{
    const auto count = [this, &model](auto signal, const char* name) {
        connect(&model, signal, this, [this, name] { ++counts_[name]; });
    };
    count(&AppModel::restorePhaseChanged, "restorePhaseChanged");
    count(&AppModel::stepChanged, "stepChanged");
    count(&AppModel::sessionChanged, "sessionChanged");
    count(&AppModel::linkPhaseChanged, "linkPhaseChanged");
    count(&AppModel::qrPayloadChanged, "qrPayloadChanged");
    count(&AppModel::linkExpiresAtChanged, "linkExpiresAtChanged");
    count(&AppModel::understandsUploadChanged, "understandsUploadChanged");
    count(&AppModel::agreesToShareChanged, "agreesToShareChanged");
    count(&AppModel::accessChanged, "accessChanged");
    count(&AppModel::scanPhaseChanged, "scanPhaseChanged");
    count(&AppModel::nimbrelChanged, "nimbrelChanged");
    count(&AppModel::exportResultChanged, "exportResultChanged");
    count(&AppModel::uploadPhaseChanged, "uploadPhaseChanged");
    count(&AppModel::submissionChanged, "submissionChanged");
    count(&AppModel::copyPhaseChanged, "copyPhaseChanged");
}

int Notifications::of(const std::string& signal) const
{
    const auto found = counts_.find(signal);
    return found == counts_.end() ? 0 : found->second;
}

ModelFixture::ModelFixture() : files(folder / "tmp"), messages(folder / "chat.db")
{
    std::filesystem::create_directory(folder / "tmp");
    messages.assistantChat();
    for (int number = 0; number < 3; ++number) messages.message();
}

ModelFixture::~ModelFixture()
{
    quit();
}

void ModelFixture::quit()
{
    runAll();
    // Requests of the clean-up get no answer.
    while (!http->waiting().empty()) fail(http->waiting().front(), URLError::Code::cannotConnectToHost);
    context.shutDown();
    changes_.reset();
    model_.reset();
    runAll();
}

AppModel& ModelFixture::launch()
{
    model_ = std::make_unique<AppModel>(AppServices{
        .context = &context,
        .clock = &clock,
        .background = &background,
        .api = VornAPI({APIConfiguration::productionBaseURL()}, http, store),
        .tokens = store,
        .transfer = http,
        .defaults = &defaults,
        .workspace = &workspace,
        .files = &files,
        .messagesDatabase = database(),
        .bundle = Bundle({{"CFBundleShortVersionString", "1.2.3"}}),
        .shortestUpload = shortestUpload,
    });
    changes_ = std::make_unique<Notifications>(*model_);
    onLaunched ? onLaunched() : model_->start();
    run();
    return *model_;
}

AppModel& ModelFixture::launchSignedIn(bool consented)
{
    tokens->save(adasSession());
    if (consented) defaults.setBoolean("consent.vorn-mac-nimbrel-1.user-ada", true);
    return launch();
}

AppModel& ModelFixture::launchFound()
{
    launchSignedIn();
    answer(quest, questJSON());
    runAll();
    changes().forget();
    return model();
}

AppModel& ModelFixture::launchUploading()
{
    launchFound();
    model().upload();
    runAll();
    answer(creates, openedJSON());
    runAll();
    return model();
}

AppModel& ModelFixture::launchDone()
{
    launchUploading();
    http->acknowledge(http->waiting(puts).value(), "\"tag-1\"");
    run();
    answer(completes, submissionJSON("analyzing"));
    return model();
}

void ModelFixture::linkAs(const StoredSession& session)
{
    answer(links, linkJSON());
    advance(std::chrono::seconds(2));
    answer(polls, approvalJSON(session));
}

void ModelFixture::runAll()
{
    do run();
    while (background.run());
}

void ModelFixture::answer(const std::string& request, const std::string& body, int status)
{
    run();
    const auto index = http->waiting(request);
    if (!index) {
        ADD_FAILURE() << request << " is not waiting, but " << ::testing::PrintToString(http->waiting());
        return;
    }
    http->answer(*index, status, body);
    run();
}

void ModelFixture::fail(const std::string& request, URLError::Code code)
{
    run();
    const auto index = http->waiting(request);
    if (!index) {
        ADD_FAILURE() << request << " is not waiting";
        return;
    }
    http->fail(*index, code);
    run();
}

std::size_t ModelFixture::asked(const std::string& request) const
{
    std::size_t count = 0;
    for (const auto& summary : http->summaries()) count += summary.substr(0, summary.find(',')) == request ? 1 : 0;
    return count;
}

void ModelFixture::setAccess(FullDiskAccessStatus status)
{
    const auto aside = folder / "aside.db";
    if (std::filesystem::is_symlink(database())) std::filesystem::remove(database());
    if (std::filesystem::exists(database())) std::filesystem::rename(database(), aside);
    if (status == FullDiskAccessStatus::granted) std::filesystem::rename(aside, database());
    // A link to itself cannot be opened by anybody, not even by root.
    if (status == FullDiskAccessStatus::denied) std::filesystem::create_symlink(database(), database());
}

std::vector<std::string> ModelFixture::leftovers() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder / "tmp"))
        names.push_back(entry.path().filename().string());
    return names;
}

std::string linkJSON(std::int64_t pollIntervalMs, const std::string& expiresAt, const std::string& payload)
{
    return fmt::format(
        R"({{"linkId":"link-1","pollSecret":"secret-canary-1","qrPayload":"{}","expiresAt":"{}","pollIntervalMs":{}}})",
        payload, expiresAt, pollIntervalMs);
}

std::string pollJSON(const std::string& status)
{
    return fmt::format(R"({{"status":"{}"}})", status);
}

std::string approvalJSON(const StoredSession& session)
{
    return fmt::format(
        R"({{"status":"approved","session":{{"token":"{}","refreshToken":"{}","user":{{"id":"{}","displayName":"{}"}}}}}})",
        session.token, session.refreshToken, session.userId, session.displayName);
}

std::string questJSON(const std::string& status, const std::string& handles, std::int64_t maxBytes)
{
    return fmt::format(R"({{"quest":{{"id":"quest-1","rewardUsd":12.5,"status":"{}"}},"handles":[{}],"maxBytes":{}}})",
                       status, handles, maxBytes);
}

std::string submissionJSON(const std::string& status)
{
    return fmt::format(
        R"({{"id":"sub-1","questId":"quest-1","status":"{}","rejectionReasonKey":null,"rewardUsd":null,"assetsRemaining":0}})",
        status);
}

std::string openedJSON()
{
    return R"({"submissionId":"sub-1","questId":"quest-1","attempt":1,"expiresInSeconds":3600,"assets":[
        {"assetId":"asset-1","position":0,"uploadId":"upload-1","parts":[
            {"partNumber":1,"url":"https://storage.example.com/part/1?sig=canary-1"}]}]})";
}

std::string partURLsJSON()
{
    return R"({"submissionId":"sub-1","assetId":"asset-1","expiresInSeconds":3600,"parts":[
        {"partNumber":1,"url":"https://storage.example.com/part/1?sig=canary-2"}]})";
}

} // namespace vorn::testing
