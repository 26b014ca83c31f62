#pragma once

#include <QObject>
#include <QUrl>
#include <qqmlregistration.h>

namespace vorn {

/// The running application, for QML. Threads: the main one.
class ThisApplication : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QUrl file READ file CONSTANT)

public:
    /// What the desktop knows it by: on a Mac its bundle; elsewhere its desktop file where one is installed, else the
    /// executable.
    static QUrl file();
};

} // namespace vorn
