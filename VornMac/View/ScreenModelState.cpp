#include "VornMac/View/ScreenModel.h"

#include "Platform/Base/Text.h"
#include "VornMac/Words/QuestNotes.h"
#include "VornMac/Words/StatisticsWords.h"

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

ScreenModel::Outcome outcomeOf(const std::string& status)
{
    using Outcome = ScreenModel::Outcome;
    if (status == "approved") return Outcome::Approved;
    if (status == "rejected") return Outcome::Rejected;
    if (status == "expired") return Outcome::Expired;
    return status == "review_pending" ? Outcome::ReviewPending : Outcome::Analyzing;
}

template <class Case>
const Case* caseOf(const std::optional<QuestAvailability>& availability)
{
    return availability ? std::get_if<Case>(&availability->state()) : nullptr;
}

} // namespace

ScreenModel::Step ScreenModel::step() const
{
    switch (model_.step()) {
    case vorn::Step::link: return Step::Link;
    case vorn::Step::consent: return Step::Consent;
    case vorn::Step::access: return Step::Access;
    case vorn::Step::find: return Step::Find;
    case vorn::Step::upload: return Step::Upload;
    case vorn::Step::done: break;
    }
    return Step::Done;
}

bool ScreenModel::isSignedIn() const
{
    return model_.session().has_value();
}

QString ScreenModel::initial() const
{
    const auto& session = model_.session();
    return session ? QString::fromStdString(text::prefixOfCharacters(session->displayName, 1)).toUpper() : QString();
}

QString ScreenModel::displayName() const
{
    const auto& session = model_.session();
    return session ? QString::fromStdString(session->displayName) : QString();
}

ScreenModel::LinkPhase ScreenModel::linkPhase() const
{
    return static_cast<LinkPhase>(model_.linkPhase().index());
}

QString ScreenModel::linkFailure() const
{
    return failureIn(model_.linkPhase());
}

QString ScreenModel::qrPayload() const
{
    return QString::fromStdString(model_.qrPayload().value_or(""));
}

bool ScreenModel::understandsUpload() const
{
    return model_.understandsUpload();
}

bool ScreenModel::agreesToShare() const
{
    return model_.agreesToShare();
}

ScreenModel::Access ScreenModel::access() const
{
    switch (model_.access()) {
    case FullDiskAccessStatus::granted: return Access::Granted;
    case FullDiskAccessStatus::denied: return Access::Denied;
    case FullDiskAccessStatus::noDatabase: break;
    }
    return Access::NoDatabase;
}

ScreenModel::ScanPhase ScreenModel::scanPhase() const
{
    return static_cast<ScanPhase>(model_.scanPhase().index());
}

QString ScreenModel::scanFailure() const
{
    return failureIn(model_.scanPhase());
}

QString ScreenModel::countOf(std::int64_t NimbrelExportStats::* count) const
{
    const auto found = model_.exportStatistics();
    return found ? QString::fromStdString(countText((*found).*count)) : QString();
}

QString ScreenModel::messageCount() const
{
    return countOf(&NimbrelExportStats::messageCount);
}

QString ScreenModel::promptCount() const
{
    return countOf(&NimbrelExportStats::promptCount);
}

QString ScreenModel::replyCount() const
{
    return countOf(&NimbrelExportStats::replyCount);
}

QString ScreenModel::dates() const
{
    const auto found = model_.exportStatistics();
    return found ? QString::fromStdString(datesText(*found)) : QString();
}

ScreenModel::Availability ScreenModel::availability() const
{
    if (!shown_.availability) return Availability::Unknown;
    if (caseOf<QuestAvailability::Cooldown>(shown_.availability)) return Availability::Cooldown;
    if (caseOf<QuestAvailability::LastRejected>(shown_.availability)) return Availability::LastRejected;
    if (caseOf<QuestAvailability::InReview>(shown_.availability)) return Availability::InReview;
    return Availability::Available;
}

QString ScreenModel::availabilityNote() const
{
    return shown_.availability ? QString::fromStdString(vorn::availabilityNote(*shown_.availability)) : QString();
}

ScreenModel::UploadPhase ScreenModel::uploadPhase() const
{
    return static_cast<UploadPhase>(model_.uploadPhase().index());
}

QString ScreenModel::uploadFailure() const
{
    return failureIn(model_.uploadPhase());
}

double ScreenModel::uploadFraction() const
{
    if (const auto* uploading = std::get_if<phase::Uploading>(&model_.uploadPhase())) return uploading->fraction;
    return uploadPhase() == UploadPhase::Finishing ? 1 : 0;
}

// What depends on several properties, or on the time.

ScreenModel::Shown ScreenModel::worked() const
{
    Shown shown;
    shown.availability = model_.availability();
    shown.canUpload = model_.canUpload();
    shown.reward = QString::fromStdString(model_.reward());
    shown.review = review(shown.availability);
    return shown;
}

ScreenModel::Review ScreenModel::review(const std::optional<QuestAvailability>& availability) const
{
    const SubmissionStatus submission = model_.submission().value_or(SubmissionStatus{});
    Review review;
    review.outcome = outcomeOf(submission.status);
    review.earned = QString::fromStdString(earnedText(submission, model_.reward()));
    if (review.outcome == Outcome::Rejected) review.rejection = QString::fromStdString(rejectionText(submission));
    if (const auto* cooldown = caseOf<QuestAvailability::Cooldown>(availability))
        review.nextUpload = QString::fromStdString(dayText(cooldown->until));
    return review;
}

} // namespace vorn
