#include "VornMac/Model/Announcements.h"

#include <algorithm>

namespace vorn {

void Announcements::add(Pending change, Place place)
{
    const bool waits = std::any_of(pending_.begin(), pending_.end(),
                                   [&](const Pending& earlier) { return earlier.property == change.property; });
    if (waits) return; // the earlier entry holds the value from before both changes
    pending_.insert(place == Place::first ? pending_.begin() : pending_.end(), std::move(change));
    tellPending();
}

void Announcements::tellPending()
{
    while (depth_ == 0 && !pending_.empty()) {
        const Pending next = std::move(pending_.front());
        pending_.pop_front();
        if (next.isChanged()) next.tell(); // a listener may change properties and announce more
    }
}

} // namespace vorn
