#pragma once

#include <vector>

#include <QObject>
#include <QPointer>
#include <QString>
#include <qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace vorn {

/// Has screen readers say what happened where the user's focus is not: one for the process, also in QML. Threads: the
/// main thread.
class Announcer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static Announcer& shared();
    /// For QML's engine, which must not own it.
    static Announcer* create(QQmlEngine* engine, QJSEngine* scripts);

    /// Says `text` soon, once. `item` is what shows it. Not said is an empty text, one that another text of the same
    /// item follows at once, and one that is not shown any more by then.
    Q_INVOKABLE void announce(QObject* item, const QString& text);

signals:
    /// Something is being said, whether or not a reader listens.
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
