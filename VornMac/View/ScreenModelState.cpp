#include "VornMac/View/ScreenModel.h"

#include "Platform/Base/Text.h"
#include "VornMac/Text/KeychainText.h"
#include "VornMac/Text/QuestText.h"
#include "VornMac/Text/StatisticsText.h"

#include <type_traits>
#include <variant>

// What ScreenModel shows of the application model.
namespace vorn {
namespace {

QString failureIn(const auto& modelPhase)
{
    const auto* failed = std::get_if<phase::Failed>(&modelPhase);
    return failed != nullptr ? QString::fromStdString(failed->text) : QString();
}

/// Whether the enumerator `Shown` stands for `Case`, whose place in the variant is the enumerator's value.
template <auto Shown, class Case, class Variant>
constexpr bool standsFor = std::is_same_v<std::variant_alternative_t<static_cast<std::size_t>(Shown), Variant>, Case>;

using Restore = ScreenModel::RestorePhase;
static_assert(standsFor<Restore::Idle, phase::Idle, RestorePhase> &&
              standsFor<Restore::Loading, phase::Loading, RestorePhase> &&
              standsFor<Restore::Waiting, phase::Waiting, RestorePhase> &&
              standsFor<Restore::Refused, phase::Refused, RestorePhase>);

using Link = ScreenModel::LinkPhase;
static_assert(standsFor<Link::Loading, phase::Loading, LinkPhase> &&
              standsFor<Link::Showing, phase::Showing, LinkPhase> &&
              standsFor<Link::Scanned, phase::Scanned, LinkPhase> &&
              standsFor<Link::Rejected, phase::Rejected, LinkPhase> &&
              standsFor<Link::Failed, phase::Failed, LinkPhase>);

using Scan = ScreenModel::ScanPhase;
static_assert(standsFor<Scan::Idle, phase::Idle, ScanPhase> && standsFor<Scan::Loading, phase::Loading, ScanPhase> &&
              standsFor<Scan::Unavailable, phase::Unavailable, ScanPhase> &&
              standsFor<Scan::NotConfigured, phase::NotConfigured, ScanPhase> &&
              standsFor<Scan::NotFound, phase::NotFound, ScanPhase> &&
              standsFor<Scan::Found, phase::Found, ScanPhase> && standsFor<Scan::Failed, phase::Failed, ScanPhase>);

using Upload = ScreenModel::UploadPhase;
static_assert(standsFor<Upload::Idle, phase::Idle, UploadPhase> &&
              standsFor<Upload::Preparing, phase::Preparing, UploadPhase> &&
              standsFor<Upload::Uploading, phase::Uploading, UploadPhase> &&
              standsFor<Upload::Finishing, phase::Finishing, UploadPhase> &&
              standsFor<Upload::Failed, phase::Failed, UploadPhase>);

ScreenModel::Outcome outcomeOf(const ReviewStatus& status)
{
    using Outcome = ScreenModel::Outcome;
    switch (status.kind()) {
    case ReviewStatus::Kind::analyzing: return Outcome::Analyzing;
    case ReviewStatus::Kind::reviewPending: return Outcome::ReviewPending;
    case ReviewStatus::Kind::approved: return Outcome::Approved;
    case ReviewStatus::Kind::rejected: return Outcome::Rejected;
    case ReviewStatus::Kind::expired: break;
    }
    return Outcome::Expired;
}

template <class Case>
const Case* caseOf(const std::optional<QuestAvailability>& availability)
{
    return availability ? std::get_if<Case>(&availability->state()) : nullptr;
}

/// The fraction of an archive that is sent, as the bar shows it.
double fractionOf(const UploadPhase& phase)
{
    if (const auto* uploading = std::get_if<phase::Uploading>(&phase)) return uploading->fraction;
    return std::holds_alternative<phase::Finishing>(phase) ? 1 : 0;
}

} // namespace

ScreenModel::Restore ScreenModel::restore() const
{
    const auto phase = static_cast<RestorePhase>(model_->restorePhase().index());
    if (phase == RestorePhase::Waiting) return {phase, QString::fromStdString(keychainWaitText())};
    const auto& refusal = model_->keychainRefusal();
    if (phase == RestorePhase::Refused && refusal)
        return {phase, QString::fromStdString(keychainRefusalText(*refusal))};
    return {phase, {}};
}

ScreenModel::Step ScreenModel::currentStep() const
{
    switch (model_->step()) {
    case vorn::Step::link: return Step::Link;
    case vorn::Step::consent: return Step::Consent;
    case vorn::Step::access: return Step::Access;
    case vorn::Step::find: return Step::Find;
    case vorn::Step::upload: return Step::Upload;
    case vorn::Step::done: break;
    }
    return Step::Done;
}

ScreenModel::User ScreenModel::user() const
{
    const auto& session = model_->session();
    if (!session) return {};
    return {true, QString::fromStdString(session->displayName),
            QString::fromStdString(text::prefixOfCharacters(session->displayName, 1)).toUpper()};
}

ScreenModel::Access ScreenModel::currentAccess() const
{
    switch (model_->access()) {
    case FullDiskAccessStatus::granted: return Access::Granted;
    case FullDiskAccessStatus::denied: return Access::Denied;
    case FullDiskAccessStatus::noDatabase: break;
    }
    return Access::NoDatabase;
}

ScreenModel::Found ScreenModel::found() const
{
    const auto statistics = model_->exportStatistics();
    if (!statistics) return {};
    const auto count = [](std::int64_t number) { return QString::fromStdString(countText(number)); };
    return {count(statistics->messageCount), count(statistics->promptCount), count(statistics->replyCount),
            QString::fromStdString(datesText(*statistics))};
}

ScreenModel::Offer ScreenModel::offer(const std::optional<QuestAvailability>& availability)
{
    if (!availability) return {};
    const auto kind = [&] {
        if (caseOf<QuestAvailability::Cooldown>(availability)) return Availability::Cooldown;
        if (caseOf<QuestAvailability::LastRejected>(availability)) return Availability::LastRejected;
        if (caseOf<QuestAvailability::InReview>(availability)) return Availability::InReview;
        return Availability::Available;
    };
    return {kind(), QString::fromStdString(vorn::availabilityNote(*availability).text)};
}

ScreenModel::Shown ScreenModel::worked() const
{
    const auto availability = model_->availability();
    Shown shown;
    shown.restore = restore();
    shown.step = currentStep();
    shown.user = user();
    shown.link = {static_cast<LinkPhase>(model_->linkPhase().index()), failureIn(model_->linkPhase())};
    shown.qrPayload = QString::fromStdString(model_->qrPayload().value_or(""));
    shown.linkExpires = model_->linkExpiresAt().has_value();
    shown.understandsUpload = model_->understandsUpload();
    shown.agreesToShare = model_->agreesToShare();
    shown.reward = QString::fromStdString(model_->reward());
    shown.access = currentAccess();
    shown.scan = {static_cast<ScanPhase>(model_->scanPhase().index()), failureIn(model_->scanPhase())};
    shown.availability = offer(availability);
    shown.canUpload = model_->canUpload();
    shown.upload = {static_cast<UploadPhase>(model_->uploadPhase().index()), failureIn(model_->uploadPhase()),
                    fractionOf(model_->uploadPhase())};
    shown.review = review(availability);
    return shown;
}

ScreenModel::Review ScreenModel::review(const std::optional<QuestAvailability>& availability) const
{
    const SubmissionStatus submission = model_->submission().value_or(SubmissionStatus{});
    Review review;
    review.outcome = outcomeOf(submission.status);
    review.earned = QString::fromStdString(earnedText(submission, model_->reward()));
    if (review.outcome == Outcome::Rejected) review.rejection = QString::fromStdString(rejectionText(submission));
    if (const auto* cooldown = caseOf<QuestAvailability::Cooldown>(availability))
        review.nextUpload = QString::fromStdString(dayText(cooldown->until));
    return review;
}

} // namespace vorn
