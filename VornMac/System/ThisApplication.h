#pragma once

#include <QObject>
#include <QUrl>
#include <QVariantMap>
#include <qqmlregistration.h>

namespace vorn {

/// The running application, for QML. Threads: the main one.
class ThisApplication : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QVariantMap dragged READ dragged CONSTANT)
    Q_PROPERTY(QUrl notices READ notices CONSTANT)

public:
    /// The file by which the desktop knows the application: on a Mac its bundle; elsewhere its desktop file if one is
    /// installed, else the executable.
    static QUrl file();
    /// The same file as the data of a drag, by MIME type.
    static QVariantMap dragged();
    /// The text file with the third-party notices and licences.
    static QUrl notices();
};

} // namespace vorn
