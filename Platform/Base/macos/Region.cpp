#include "Platform/Base/SystemFacts.h"
#include "Platform/Base/macos/CFObject.h"

namespace vorn {

std::string timeZoneIdentifier()
{
    const CFOwned<CFTimeZoneRef> zone(CFTimeZoneCopySystem());
    return zone ? utf8(CFTimeZoneGetName(zone.get())).value_or("Etc/UTC") : "Etc/UTC";
}

std::string localeIdentifier()
{
    const CFOwned<CFLocaleRef> locale(CFLocaleCopyCurrent());
    return languageTag(locale ? utf8(CFLocaleGetIdentifier(locale.get())).value_or("") : "");
}

std::string dateLocaleIdentifier()
{
    return localeIdentifier(); // one setting covers both
}

} // namespace vorn
