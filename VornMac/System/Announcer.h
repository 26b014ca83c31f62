#pragma once

#include <vector>

#include <QObject>
#include <QPointer>
#include <QString>
#include <qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace vorn {

/// Makes screen readers speak changes outside the user's focus. One object for the process, which QML shares. Threads:
/// the main one.
class Announcer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static Announcer& shared();
    /// For QML's engine, which must not own it.
    static Announcer* create(QQmlEngine* engine, QJSEngine* scripts);

    /// Speaks `text`, which `item` shows, once, after control has returned to the event loop. Skips empty text, text
    /// that the same item has replaced by then, and text of an item that is no longer visible.
    Q_INVOKABLE void announce(QObject* item, const QString& text);

signals:
    /// Emitted when a text is spoken, whether or not a screen reader is running.
    void announced(QObject* item, const QString& text);

private:
    struct Pending {
        QPointer<QObject> item;
        QString text;
    };

    Announcer() = default;
    Q_INVOKABLE void tellPending();
    void tellReaders(QObject* item, const QString& text);

    std::vector<Pending> pending_;
};

} // namespace vorn
