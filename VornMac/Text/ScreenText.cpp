#include "VornMac/Text/ScreenText.h"

namespace vorn {

const char* toneText(Tone tone)
{
    switch (tone) {
    case Tone::waiting: return "In progress";
    case Tone::good: return "OK";
    case Tone::warning: return "Attention";
    case Tone::bad: break;
    }
    return "Error";
}

} // namespace vorn
