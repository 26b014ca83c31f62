#include "VornMac/View/ShownText.h"

#include "VornMac/Text/QuestText.h"

namespace vorn {

QString shown(const std::string& text)
{
    return QString::fromStdString(text);
}

QStringList shown(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts) list.append(shown(text));
    return list;
}

ShownStatus::ShownStatus(const StatusText& status)
    : tone(static_cast<int>(status.tone)), spokenTone(status.text.empty() ? "" : toneText(status.tone)),
      text(shown(status.text))
{
}

ShownReward::ShownReward(const std::string& amount, const RewardStatus& status)
    : amount(shown(amount)), isAmount(vorn::isAmount(amount)), standing(static_cast<int>(status.standing)),
      status(shown(status.text))
{
}

ShownUploadBar::ShownUploadBar(const UploadBar& bar, const std::string& amounts)
    : value(bar.value), isBusy(bar.isBusy), percents(bar.isMeasured ? shown(percentLabel(bar.value)) : QString()),
      percentage(shown(percentText(bar.value))), amounts(shown(amounts))
{
}

ShownText::ShownText(const ScreenText& screen)
    : title(shown(screen.title)), subtitle(shown(screen.subtitle)), heading(shown(screen.heading)),
      lead(shown(screen.lead)), steps(shown(screen.steps)), status(screen.status), remark(screen.remark),
      hints(shown(screen.hints)), note(shown(screen.note)), retry(shown(screen.retry)), primary(shown(screen.primary)),
      back(shown(screen.back)), caption(shown(screen.caption))
{
}

ShownSection::ShownSection(const Consent::Section& section)
    : heading(shown(section.heading)), points(shown(section.points))
{
}

ShownConsent::ShownConsent(const Consent& consent)
    : reads(consent.reads), neverReads(consent.neverReads), next(consent.next),
      understandsUpload(shown(consent.understandsUpload)), agreesToShare(shown(consent.agreesToShare))
{
}

} // namespace vorn
