#include "VornMac/System/Announcer.h"

#include <QAccessible>

namespace vorn {

void Announcer::announce(QObject* item, const QString& text)
{
    if (item == nullptr || text.isEmpty()) return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(item, text);
#else
    // Before there were announcements, an alert is what readers say of their own accord: the item's name.
    QAccessibleEvent event(item, QAccessible::Alert);
#endif
    QAccessible::updateAccessibility(&event);
}

} // namespace vorn
