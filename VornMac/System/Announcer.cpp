#include "VornMac/System/Announcer.h"

#include <QAccessible>
#include <QPointer>
#include <QQmlEngine>

namespace vorn {

Announcer& Announcer::shared()
{
    static Announcer announcer;
    return announcer;
}

Announcer* Announcer::create(QQmlEngine* /*engine*/, QJSEngine* /*scripts*/)
{
    QQmlEngine::setObjectOwnership(&shared(), QQmlEngine::CppOwnership);
    return &shared();
}

void Announcer::announce(QObject* item, const QString& text)
{
    if (item == nullptr || text.isEmpty()) return;
    // Not before everything that follows from the change has changed too: the item's name may be still the old one.
    const auto say = [this, shown = QPointer(item), text] {
        if (shown) tellReaders(shown, text);
    };
    QMetaObject::invokeMethod(this, say, Qt::QueuedConnection);
}

void Announcer::tellReaders(QObject* item, const QString& text)
{
    emit announced(item, text);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(item, text);
#else
    // Before there were announcements, an alert is what readers say of their own accord: the item's name.
    QAccessibleEvent event(item, QAccessible::Alert);
#endif
    QAccessible::updateAccessibility(&event);
}

} // namespace vorn
