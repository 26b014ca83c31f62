#include "VornMac/Application/AppDelegate.h"

#include "Platform/Desktop/ForegroundApplication.h"

#include <utility>

#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QImageReader>
#include <QPixmap>

namespace vorn {

AppDelegate::AppDelegate(std::function<void()> quit)
{
    QGuiApplication::setQuitOnLastWindowClosed(false); // the default leaves the loop without calling `quit`
    connect(qGuiApp, &QGuiApplication::lastWindowClosed, this, std::move(quit));
}

void AppDelegate::didFinishLaunching()
{
    becomeRegularApplication();
    activateApplication();
}

void AppDelegate::didShowWindow()
{
    QIcon icon;
    for (const QFileInfo& file : QDir(":/icon").entryInfoList()) {
        QImageReader reader(file.filePath(), "PNG");
        reader.setAutoDetectImageFormat(false); // otherwise Qt tries every format, and each loads a library
        icon.addPixmap(QPixmap::fromImageReader(&reader));
    }
    if (!icon.isNull()) QGuiApplication::setWindowIcon(icon);
}

} // namespace vorn
