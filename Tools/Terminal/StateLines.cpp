#include "Tools/Terminal/StateLines.h"

#include "Platform/Base/Dates.h"
#include "Platform/Base/Match.h"
#include "Tools/Terminal/StateJSON.h"

#include <optional>

namespace vorn {
namespace {

using JSON = StateJSON;

JSON jsonOf(const std::optional<Instant>& instant)
{
    return instant ? JSON(internetDateTime(*instant)) : JSON(nullptr);
}

const char* nameOf(FullDiskAccessStatus status)
{
    switch (status) {
    case FullDiskAccessStatus::granted: return "granted";
    case FullDiskAccessStatus::denied: return "denied";
    case FullDiskAccessStatus::noDatabase: return "noDatabase";
    }
    return "";
}

template <class... Cases>
JSON jsonOf(const std::variant<Cases...>& phase)
{
    const Match names{
        [](const phase::Failed& failed) -> JSON { return {{"phase", "failed"}, {"text", failed.text}}; },
        [](const phase::Uploading& uploading) -> JSON {
            return {{"phase", "uploading"}, {"fraction", uploading.fraction}};
        },
        [](const auto& plain) -> JSON { return {{"phase", plain.name()}}; },
    };
    return std::visit(names, phase);
}

JSON jsonOf(const std::optional<StoredSession>& session)
{
    if (!session) return nullptr;
    return {{"userId", session->userId}, {"displayName", session->displayName}};
}

JSON jsonOf(const std::optional<SubmissionStatus>& submission)
{
    return submission ? vorn::jsonOf(*submission) : JSON(nullptr);
}

JSON questOf(const AppModel& model)
{
    const auto& nimbrel = model.nimbrel();
    const auto availability = model.availability();
    if (!nimbrel || !availability) return nullptr;
    return {{"status", nimbrel->quest.status},
            {"availability", availabilityName(*availability)},
            {"rewardUsd", orNull(nimbrel->quest.rewardUsd)},
            {"maxBytes", nimbrel->maxBytes}};
}

JSON jsonOf(const std::optional<NimbrelExportStats>& found)
{
    if (!found) return nullptr;
    return {{"chats", found->chatCount},    {"messages", found->messageCount},   {"yourMessages", found->promptCount},
            {"replies", found->replyCount}, {"firstAt", jsonOf(found->firstAt)}, {"lastAt", jsonOf(found->lastAt)}};
}

} // namespace

StateLines::StateLines(const AppModel& model, std::FILE* file) : model_(model), file_(file)
{
    using M = AppModel;
    follow(&M::stepChanged, [](const M& m) -> JSON { return {{"step", nameOf(m.step())}}; });
    follow(&M::sessionChanged, [](const M& m) -> JSON { return {{"session", jsonOf(m.session())}}; });
    follow(&M::linkPhaseChanged, [](const M& m) -> JSON { return {{"linkPhase", jsonOf(m.linkPhase())}}; });
    follow(&M::qrPayloadChanged, [](const M& m) -> JSON { return {{"qrPayload", orNull(m.qrPayload())}}; });
    follow(&M::linkExpiresAtChanged, [](const M& m) -> JSON { return {{"linkExpiresAt", jsonOf(m.linkExpiresAt())}}; });
    follow(&M::understandsUploadChanged,
           [](const M& m) -> JSON { return {{"understandsUpload", m.understandsUpload()}}; });
    follow(&M::agreesToShareChanged, [](const M& m) -> JSON { return {{"agreesToShare", m.agreesToShare()}}; });
    follow(&M::accessChanged, [](const M& m) -> JSON { return {{"access", nameOf(m.access())}}; });
    follow(&M::scanPhaseChanged, [](const M& m) -> JSON { return {{"scanPhase", jsonOf(m.scanPhase())}}; });
    follow(&M::nimbrelChanged, [](const M& m) -> JSON { return {{"nimbrel", questOf(m)}}; });
    follow(&M::exportResultChanged, [](const M& m) -> JSON { return {{"export", jsonOf(m.exportStatistics())}}; });
    follow(&M::uploadPhaseChanged, [](const M& m) -> JSON { return {{"uploadPhase", jsonOf(m.uploadPhase())}}; });
    follow(&M::submissionChanged, [](const M& m) -> JSON { return {{"submission", jsonOf(m.submission())}}; });
    print(JSON{{"step", nameOf(model.step())}}.dump());
}

template <class Write>
void StateLines::follow(void (AppModel::*signal)(), Write write)
{
    // In ASCII, so that no control character reaches the terminal.
    connect(&model_, signal, this,
            [this, write] { print(write(model_).dump(-1, ' ', true, JSON::error_handler_t::replace)); });
}

void StateLines::print(const std::string& line)
{
    written_ = std::fputs((line + "\n").c_str(), file_) != EOF && std::fflush(file_) == 0 && written_;
}

} // namespace vorn
