#pragma once

#include <QObject>
#include <QString>
#include <qqmlregistration.h>

namespace vorn {

/// Has screen readers say what happened where the user's focus is not. Threads: the main thread.
class Announcer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Says `text`, once. `item` is what shows it. An empty text is not said.
    Q_INVOKABLE static void announce(QObject* item, const QString& text);
};

} // namespace vorn
