#pragma once

#include <vector>

#include <QObject>
#include <QPointer>
#include <QString>
#include <qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace vorn {

/// Makes screen readers speak changes outside the user's focus. One for the process, also in QML. Threads: the main
/// one.
class Announcer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static Announcer& shared();
    /// For QML's engine, which must not own it.
    static Announcer* create(QQmlEngine* engine, QJSEngine* scripts);

    /// Speaks `text`, which `item` shows, soon and once. Skips empty text, text that the same item replaces at once,
    /// and text that is no longer visible by then.
    Q_INVOKABLE void announce(QObject* item, const QString& text);

signals:
    /// A text is spoken, whether or not a reader listens.
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
