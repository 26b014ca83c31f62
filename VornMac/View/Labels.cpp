#include "VornMac/View/Labels.h"

#include <QCoreApplication>

namespace vorn {

Labels::Labels()
{
    example_.show(vorn::exampleConversation());
}

QString Labels::version()
{
    return QString::fromStdString(versionText(QCoreApplication::applicationVersion().toStdString()));
}

QString Labels::switchText(const QString& application, bool isOn)
{
    return QString::fromStdString(vorn::switchText(application.toStdString(), isOn));
}

} // namespace vorn
