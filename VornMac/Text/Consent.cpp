#include "VornMac/Text/Consent.h"

#include "VornMac/Text/CommonText.h"

namespace vorn {

Consent consentFor(const std::string& reward)
{
    return {
        .title = yourChat,
        .subtitle = "Exactly what we upload",
        .line = "Your Nimbrel chat: exactly what we upload",
        .reads =
            {"What Vorn reads",
             {"Your one-to-one conversation with Nimbrel: the text of each message, when it was sent, and who sent "
              "it.",
              "Links in those messages, and the type of any attachment (\"a photo\"), never the file itself."}},
        .neverReads = {"What Vorn never reads",
                       {"Any other conversation, group chats (even ones Nimbrel is in), contacts, photos or files."}},
        .next = {"What happens next",
                 {"Your chat is pseudonymized and added to a dataset that trains AI assistants. You earn " + reward +
                  " when it's accepted."}},
        .understandsUpload = "I understand what's uploaded",
        .agreesToShare = "I agree to share my Nimbrel chat",
        .primary = goOn,
        .caption = "Example. Your own chat never shows here.",
    };
}

std::string consentKey(const std::string& userId)
{
    return std::string("consent.") + Consent::termsVersion + "." + userId;
}

} // namespace vorn
