#include "VornMac/System/Announcer.h"

#include <utility>

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

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
    if (pending_.empty()) QMetaObject::invokeMethod(this, "tellPending", Qt::QueuedConnection);
    std::erase_if(pending_, [item](const Pending& earlier) { return earlier.item == item; });
    pending_.push_back({item, text});
}

/// Queued, so that everything that follows from a change has changed too: until then an item's name may be the old one.
void Announcer::tellPending()
{
    for (const Pending& pending : std::exchange(pending_, {})) {
        const auto* shown = qobject_cast<QQuickItem*>(pending.item);
        if (shown != nullptr && shown->isVisible() && shown->window() != nullptr)
            tellReaders(pending.item, pending.text);
    }
}

void Announcer::tellReaders(QObject* item, const QString& text)
{
    emit announced(item, text);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(item, text);
#else
    // Qt before 6.8 has no announcements; readers speak the name of an item that raises an alert.
    QAccessibleEvent event(item, QAccessible::Alert);
#endif
    QAccessible::updateAccessibility(&event);
}

} // namespace vorn
