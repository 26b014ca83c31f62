#include "VornMac/Model/Decisions.h"

#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "VornMacCore/Client/APIError.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <utility>

namespace vorn::decide {
namespace {

DeviceLinkPoll pollOf(DeviceLinkStatus status)
{
    DeviceLinkPoll poll;
    poll.status = status;
    return poll;
}

DeviceLinkPoll approval()
{
    DeviceLinkPoll poll = pollOf(DeviceLinkStatus::approved);
    poll.session.emplace();
    return poll;
}

NimbrelState stateWith(std::vector<std::string> handles, std::int64_t maxBytes = 100)
{
    NimbrelState state;
    state.handles = std::move(handles);
    state.maxBytes = maxBytes;
    return state;
}

TEST(DecideStep, IsTheConsentUntilItIsGivenThenWhatAccessAllows)
{
    using enum FullDiskAccessStatus;
    struct Row {
        bool hasAcceptedConsent;
        FullDiskAccessStatus access;
        Step step;
    };
    for (const auto& [accepted, access, step] : {
             Row{false, granted, Step::consent},
             Row{false, denied, Step::consent},
             Row{true, granted, Step::find},
             Row{true, denied, Step::access},
             Row{true, noDatabase, Step::access},
         }) {
        EXPECT_EQ(stepAfterSignIn(accepted, access), step);
        if (accepted) EXPECT_EQ(stepAfterConsent(access), step);
    }
}

TEST(DecideSessionTrouble, IsWhatTheClientSaysOfTheSessionAndNothingElse)
{
    EXPECT_EQ(sessionTrouble(std::runtime_error("no network")), SessionTrouble::none);
    EXPECT_EQ(sessionTrouble(APIError(APIError::HTTP{401, {}, {}})), SessionTrouble::none);
    EXPECT_EQ(sessionTrouble(APIError(APIError::InvalidResponse{})), SessionTrouble::none);
    EXPECT_EQ(sessionTrouble(APIError(APIError::NotSignedIn{})), SessionTrouble::ended);
    EXPECT_EQ(sessionTrouble(APIError(APIError::SessionExpired{})), SessionTrouble::ended);
    EXPECT_EQ(sessionTrouble(APIError(APIError::SessionChanged{})), SessionTrouble::replaced);
}

TEST(DecideCodeTurn, FollowsTheAnswerOfThePhone)
{
    EXPECT_EQ(codeTurn(pollOf(DeviceLinkStatus::pending)), CodeTurn::keepPolling);
    EXPECT_EQ(codeTurn(pollOf(DeviceLinkStatus::scanned)), CodeTurn::showScanned);
    EXPECT_EQ(codeTurn(pollOf(DeviceLinkStatus::rejected)), CodeTurn::declined);
    EXPECT_EQ(codeTurn(pollOf(DeviceLinkStatus::expired)), CodeTurn::expired);
    EXPECT_EQ(codeTurn(approval()), CodeTurn::signIn);
    EXPECT_EQ(codeTurn(pollOf(DeviceLinkStatus::approved)), CodeTurn::expired) << "without a session";
}

TEST(DecideScan, ReadsOnlyWhenItIsKnownWhomTheChatIsWith)
{
    EXPECT_EQ(phaseBeforeReading(stateWith({})), ScanPhase(phase::NotConfigured{}));
    EXPECT_EQ(phaseBeforeReading(stateWith({"a@b.example"})), std::nullopt);
    EXPECT_EQ(phaseAfterReading(true), ScanPhase(phase::Found{}));
    EXPECT_EQ(phaseAfterReading(false), ScanPhase(phase::NotFound{}));
}

TEST(DecideFailedScan, NamesTheReasonOrSendsTheUserToTheAccess)
{
    EXPECT_EQ(failedScan(APIError(APIError::HTTP{404, {}, {}})).phase, ScanPhase(phase::Unavailable{}));
    EXPECT_EQ(failedScan(NimbrelExportError(NimbrelExportError::AccessDenied{})).phase, std::nullopt);
    const auto refused = failedScan(APIError(APIError::HTTP{500, {}, {}}));
    EXPECT_EQ(refused.phase, ScanPhase(phase::Failed{.text = "The server answered 500."}));
    EXPECT_FALSE(refused.isLogged);
    const auto unread = failedScan(
        NimbrelExportError(NimbrelExportError::Database{SQLiteError(SQLiteError::Stage::step, 10, "disk I/O error")}));
    EXPECT_TRUE(std::holds_alternative<phase::Failed>(unread.phase.value()));
    EXPECT_TRUE(unread.isLogged);
}

TEST(DecideUploadLimit, IsTheServicesAndIncludesItself)
{
    EXPECT_FALSE(isTooLarge(100, stateWith({}, 100)));
    EXPECT_TRUE(isTooLarge(101, stateWith({}, 100)));
    EXPECT_FALSE(isTooLarge(std::numeric_limits<std::int64_t>::max(), std::nullopt));
}

TEST(DecideUploadPhase, FollowsReportsOnlyWhileSending)
{
    const UploadProgress half{.bytesSent = 5, .totalBytes = 10};
    const UploadProgress whole{.bytesSent = 10, .totalBytes = 10};
    EXPECT_EQ(phaseAfterProgress(phase::Uploading{0}, half), UploadPhase(phase::Uploading{0.5}));
    EXPECT_EQ(phaseAfterProgress(phase::Uploading{0.5}, whole), UploadPhase(phase::Finishing{}));
    for (const UploadPhase& late : {UploadPhase(phase::Idle{}), UploadPhase(phase::Preparing{}),
                                    UploadPhase(phase::Finishing{}), UploadPhase(phase::Failed{.text = "lost"})})
        EXPECT_EQ(phaseAfterProgress(late, half), std::nullopt);
}

} // namespace
} // namespace vorn::decide
