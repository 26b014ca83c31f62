#include "VornMac/System/ThisApplication.h"

#include "VornMac/System/SystemLook.h"

namespace vorn {

QUrl ThisApplication::file()
{
    return QUrl::fromLocalFile(applicationFile());
}

QVariantMap ThisApplication::dragged()
{
    return {{QStringLiteral("text/uri-list"), file().toString(QUrl::FullyEncoded)}};
}

QUrl ThisApplication::notices()
{
    return QUrl::fromLocalFile(noticesFile());
}

} // namespace vorn
