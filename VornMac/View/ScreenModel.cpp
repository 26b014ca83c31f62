#include "VornMac/View/ScreenModel.h"

#include "VornMac/View/Countdown.h"
#include "VornMac/Words/QuestNotes.h"
#include "VornMac/Words/StatisticsWords.h"

#include <type_traits>
#include <utility>
#include <variant>

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

ScreenModel::ScreenModel(AppModel& model, MainContext& context, Clock& clock)
    : model_(model), context_(context), clock_(clock), shown_(worked())
{
    follow();
    showExport();
    restartCountdown();
}

void ScreenModel::follow()
{
    const auto on = [this](auto signal, auto action) { connect(&model_, signal, this, action); };
    on(&AppModel::stepChanged, &ScreenModel::enterStep);
    on(&AppModel::sessionChanged, &ScreenModel::sessionChanged);
    on(&AppModel::linkPhaseChanged, &ScreenModel::linkPhaseChanged);
    on(&AppModel::qrPayloadChanged, &ScreenModel::qrPayloadChanged);
    on(&AppModel::qrPayloadChanged, &ScreenModel::restartCountdown);
    on(&AppModel::linkExpiresAtChanged, &ScreenModel::restartCountdown);
    on(&AppModel::understandsUploadChanged, &ScreenModel::understandsUploadChanged);
    on(&AppModel::agreesToShareChanged, &ScreenModel::agreesToShareChanged);
    on(&AppModel::accessChanged, &ScreenModel::accessChanged);
    on(&AppModel::scanPhaseChanged, &ScreenModel::refresh);
    on(&AppModel::scanPhaseChanged, &ScreenModel::scanPhaseChanged);
    on(&AppModel::nimbrelChanged, &ScreenModel::refresh);
    on(&AppModel::exportResultChanged, &ScreenModel::showExport);
    on(&AppModel::uploadPhaseChanged, &ScreenModel::uploadPhaseChanged);
    on(&AppModel::submissionChanged, &ScreenModel::refresh);
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

void ScreenModel::refresh()
{
    const Shown before = std::exchange(shown_, worked());
    // Who hears of one may change the model, and so this again: compare first.
    const bool availability = before.availability != shown_.availability;
    const bool upload = before.canUpload != shown_.canUpload;
    const bool reward = before.reward != shown_.reward;
    const bool outcome = before.review != shown_.review;
    if (availability) emit availabilityChanged();
    if (upload) emit canUploadChanged();
    if (reward) emit rewardChanged();
    if (outcome) emit outcomeChanged();
}

void ScreenModel::showExport()
{
    const AppModel::Export& found = model_.exportResult();
    statistics_ = found ? std::optional(found->stats()) : std::nullopt;
    preview_.show(found);
    emit exportResultChanged();
}

/// Before the new screen is made, which shows what is true then.
void ScreenModel::enterStep()
{
    refresh();
    restartCountdown();
    emit stepChanged();
}

// The code's time.

void ScreenModel::restartCountdown()
{
    countdown_ = {};
    if (step() != Step::Link) return;
    const auto expiry = model_.linkExpiresAt();
    const bool counts = model_.qrPayload() && expiry;
    setLinkSecondsLeft(counts ? countdown::secondsLeft(clock_.date(), *expiry) : 0);
    if (counts && linkSecondsLeft_ > 0) countdown_ = Task(context_, runCountdown(*expiry));
}

Async<> ScreenModel::runCountdown(Instant expiry)
{
    while (const auto pause = countdown::untilNextSecond(clock_.date(), expiry)) {
        co_await clock_.sleep(*pause);
        setLinkSecondsLeft(countdown::secondsLeft(clock_.date(), expiry));
    }
}

void ScreenModel::setLinkSecondsLeft(int seconds)
{
    if (std::exchange(linkSecondsLeft_, seconds) != seconds) emit linkSecondsLeftChanged();
}

// The state.

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

QString ScreenModel::displayName() const
{
    return model_.session() ? QString::fromStdString(model_.session()->displayName) : QString();
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

void ScreenModel::setUnderstandsUpload(bool value)
{
    model_.setUnderstandsUpload(value);
}

bool ScreenModel::agreesToShare() const
{
    return model_.agreesToShare();
}

void ScreenModel::setAgreesToShare(bool value)
{
    model_.setAgreesToShare(value);
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

QString ScreenModel::messageCount() const
{
    return statistics_ ? QString::fromStdString(countText(statistics_->messageCount)) : QString();
}

QString ScreenModel::promptCount() const
{
    return statistics_ ? QString::fromStdString(countText(statistics_->promptCount)) : QString();
}

QString ScreenModel::replyCount() const
{
    return statistics_ ? QString::fromStdString(countText(statistics_->replyCount)) : QString();
}

QString ScreenModel::dates() const
{
    return statistics_ ? QString::fromStdString(datesText(*statistics_)) : QString();
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

// The operations.

void ScreenModel::start()
{
    refresh();
    model_.start();
}

void ScreenModel::go(Step step)
{
    model_.go(allSteps.at(static_cast<std::size_t>(step)));
}

void ScreenModel::startLinking()
{
    model_.startLinking();
}

void ScreenModel::acceptConsent()
{
    model_.acceptConsent();
}

void ScreenModel::startAccessProbe()
{
    model_.startAccessProbe();
}

void ScreenModel::openFullDiskAccessSettings()
{
    model_.openFullDiskAccessSettings();
}

void ScreenModel::revealAppInFinder()
{
    model_.revealAppInFinder();
}

void ScreenModel::relaunch()
{
    model_.relaunch();
}

void ScreenModel::upload()
{
    model_.upload();
}

void ScreenModel::signOut()
{
    model_.signOut();
}

} // namespace vorn
