#include "VornMac/View/Labels.h"

namespace vorn {

Labels::Labels()
{
    example_.show(vorn::exampleConversation());
}

QString Labels::switchText(const QString& application, bool isOn)
{
    return QString::fromStdString(vorn::switchText(application.toStdString(), isOn));
}

} // namespace vorn
