#include "VornMac/Text/StepText.h"

#include "VornMac/Text/AccessText.h"
#include "VornMac/Text/Consent.h"
#include "VornMac/Text/FindText.h"
#include "VornMac/Text/LinkText.h"
#include "VornMac/Text/QuestText.h"
#include "VornMac/Text/UploadText.h"

namespace vorn {
namespace {

ScreenText consentText(const Consent& consent)
{
    return {
        .title = consent.title, .subtitle = consent.subtitle, .primary = consent.primary, .caption = consent.caption};
}

} // namespace

ScreenText textOfStep(const StepState& state)
{
    switch (state.step) {
    case Step::link: return linkText(state.link);
    case Step::consent: return consentText(consentFor(rewardText(state.outcome.nimbrel)));
    case Step::access: return accessText(state.access);
    case Step::find: return findText(state.scan, state.outcome.availability);
    case Step::upload: return uploadText(state.upload);
    case Step::done: break;
    }
    return doneText(state.outcome);
}

} // namespace vorn
