#include "tests/VornMac/Screens/StateTexts.h"

#include "VornMac/Text/AccessText.h"
#include "VornMac/Text/AccountText.h"
#include "VornMac/Text/CommonText.h"
#include "VornMac/Text/Consent.h"
#include "VornMac/Text/DoneText.h"
#include "VornMac/Text/FindText.h"
#include "VornMac/Text/LinkText.h"
#include "VornMac/Text/Preview.h"
#include "VornMac/Text/QuestText.h"
#include "VornMac/Text/StatisticsText.h"
#include "VornMac/Text/UploadText.h"

#include <initializer_list>
#include <variant>

namespace vorn::testing {
namespace {

void add(Texts& texts, std::initializer_list<std::string> more)
{
    texts.insert(more.begin(), more.end());
}

void add(Texts& texts, const ScreenText& screen)
{
    add(texts, {screen.title, screen.subtitle, screen.title + " " + screen.subtitle, screen.heading, screen.status.text,
                screen.remark.text, screen.note, screen.retry, screen.primary, screen.back, screen.caption});
    for (const auto* part : {&screen.lead, &screen.steps, &screen.hints}) texts.insert(part->begin(), part->end());
    for (std::size_t index = 0; index < screen.steps.size(); ++index) {
        const std::string number = std::to_string(index + 1);
        add(texts, {number, number + ". " + screen.steps[index]});
    }
}

void addConsent(Texts& texts, const std::string& reward)
{
    const Consent consent = consentFor(reward);
    add(texts, {consent.title, consent.subtitle, consent.title + " " + consent.subtitle, consent.understandsUpload,
                consent.agreesToShare, consent.primary, consent.caption, conversation});
    for (const auto* section : {&consent.reads, &consent.neverReads, &consent.next}) {
        texts.insert(section->heading);
        texts.insert(section->points.begin(), section->points.end());
    }
    for (const PreviewedMessage& message : exampleConversation()) add(texts, {message.text, spokenText(message)});
}

void addReward(Texts& texts, const std::string& amount, const RewardStatus& status)
{
    add(texts, {amount, amount + ", " + questName, questName, status.text});
}

void addLink(Texts& texts, const AppModel& model, Instant date)
{
    const bool isScanned = std::holds_alternative<phase::Scanned>(model.linkPhase());
    const auto expiry = model.linkExpiresAt();
    const bool isShown = model.qrPayload() && !isScanned && (!expiry || *expiry > date);
    add(texts, linkText(model.linkPhase()));
    if (isScanned) add(texts, {codeIsRead, stepIsDone, stepIsNext});
    if (isShown) texts.insert(codeName);
    if (!isShown || !expiry) return;
    const std::string left =
        clockText(static_cast<int>(std::chrono::ceil<std::chrono::seconds>(*expiry - date).count()));
    add(texts, {codeLifetime, left, codeLifetime + left});
}

void addFind(Texts& texts, const AppModel& model)
{
    add(texts, findText(model.scanPhase(), model.availability()));
    if (!std::holds_alternative<phase::Found>(model.scanPhase())) return;
    texts.insert(conversation);
    for (const StatisticsRow& row : statisticsRows(model.exportStatistics().value()))
        add(texts, {row.label, row.value});
    for (const PreviewedMessage& message : previewOf(model.exportResult()->messages))
        add(texts, {message.text, spokenText(message)});
}

void addUpload(Texts& texts, const AppModel& model)
{
    const UploadBar bar = uploadBar(model.uploadPhase());
    add(texts, uploadText(model.uploadPhase()));
    add(texts, {archiveName, percentText(bar.value), uploadAmounts(bar, model.uploadProgress(), std::nullopt)});
    if (bar.isMeasured) texts.insert(percentLabel(bar.value));
    addReward(texts, model.reward(), rewardStatus(model.uploadPhase()));
}

void addDone(Texts& texts, const AppModel& model)
{
    const SubmissionStatus submission = model.submission().value_or(SubmissionStatus{});
    add(texts, doneText({submission, model.nimbrel(), model.availability()}));
    addReward(texts, earnedText(submission, model.reward()), rewardStatus(submission.status));
}

void addStep(Texts& texts, const AppModel& model, Instant date)
{
    switch (model.step()) {
    case Step::link: addLink(texts, model, date); break;
    case Step::consent: addConsent(texts, model.reward()); break;
    case Step::access:
        add(texts, accessText(model.access()));
        add(texts, {settingsPane, settingsPath, settingsExplanation, showInFinder, stepIsDone, stepIsNext});
        break;
    case Step::find: addFind(texts, model); break;
    case Step::upload: addUpload(texts, model); break;
    case Step::done: addDone(texts, model); break;
    }
}

} // namespace

Texts textsNow(const AppModel& model, Instant date)
{
    Texts texts;
    addStep(texts, model, date);
    if (model.session()) add(texts, {account, signedInText(model.session()->displayName)});
    texts.insert(stepText(static_cast<int>(model.step()) + 1, static_cast<int>(stepNames.size())));
    texts.erase("");
    return texts;
}

bool isOfUploadNow(const std::string& text, const AppModel& model)
{
    const UploadBar bar = uploadBar(model.uploadPhase());
    const std::string amounts = uploadAmounts(bar, model.uploadProgress(), std::nullopt);
    return model.step() == Step::upload && bar.isMoving() && text.starts_with(amounts + ", ");
}

const Texts& textsOfAllStates()
{
    static const Texts all = [] {
        Texts texts;
        for (const LinkPhase& phase : {LinkPhase(phase::Loading{}), LinkPhase(phase::Showing{}),
                                       LinkPhase(phase::Scanned{}), LinkPhase(phase::Rejected{})})
            add(texts, linkText(phase));
        add(texts, {codeIsRead, codeName, codeLifetime, stepIsDone, stepIsNext, account});
        addConsent(texts, rewardText(std::nullopt));
        for (const auto access :
             {FullDiskAccessStatus::granted, FullDiskAccessStatus::denied, FullDiskAccessStatus::noDatabase})
            add(texts, accessText(access));
        for (const ScanPhase& phase :
             {ScanPhase(phase::Loading{}), ScanPhase(phase::Unavailable{}), ScanPhase(phase::NotConfigured{}),
              ScanPhase(phase::NotFound{}), ScanPhase(phase::Found{})})
            add(texts, findText(phase, QuestAvailability(QuestAvailability::InReview{})));
        for (const UploadPhase& phase : {UploadPhase(phase::Preparing{}), UploadPhase(phase::Uploading{}),
                                         UploadPhase(phase::Finishing{}), UploadPhase(phase::Failed{"No."})}) {
            add(texts, uploadText(phase));
            texts.insert(rewardStatus(phase).text);
        }
        for (const char* status : {"analyzing", "review_pending", "approved", "rejected", "expired"}) {
            SubmissionStatus submission;
            submission.status = status;
            add(texts, doneText({submission, std::nullopt, std::nullopt}));
            texts.insert(rewardStatus(submission.status).text);
        }
        texts.erase("");
        return texts;
    }();
    return all;
}

} // namespace vorn::testing
