#include "VornMacCore/Wire/RejectionCopy.h"

#include <array>
#include <string_view>
#include <utility>

namespace vorn::RejectionCopy {

std::string text(const std::optional<std::string>& key)
{
    static constexpr std::array<std::pair<std::string_view, const char*>, 6> sentences{{
        {"media_unreadable", "We couldn't read this export. Update Vorn for Mac and try again."},
        {"wrong_provider", "This upload didn't look like your Nimbrel chat."},
        {"duplicate_media", "These conversations were already uploaded from another account."},
        {"export_too_small", "There isn't enough Nimbrel conversation yet. Keep chatting and come back with a few "
                             "conversations and at least 10 of your own messages."},
        {"nothing_new_since_last", "Nothing new since your last upload. Come back after more chats with Nimbrel."},
        // Deliberately speaks of a damaged upload: a suspicion may be wrong, and would accuse an honest user.
        {"authenticity_suspected", "The upload didn't arrive intact. Try again."},
    }};
    for (const auto& [known, sentence] : sentences) {
        if (key == known) return sentence;
    }
    return "This upload wasn't accepted.";
}

} // namespace vorn::RejectionCopy
