#include "VornMac/Application/MainWindow.h"

#include "Platform/Desktop/ForegroundApplication.h"
#include "Platform/Desktop/WindowChrome.h"
#include "VornMac/Application/WindowShortcuts.h"

#include <QQmlComponent>

namespace vorn {
namespace {

[[noreturn]] void fail(const QUrl& source, const QQmlComponent& component)
{
    QString text = "cannot make the window of " + source.toString();
    for (const QQmlError& error : component.errors()) text += '\n' + error.toString();
    throw WindowError(text.toStdString());
}

std::unique_ptr<QQuickWindow> windowOf(QQmlEngine& engine, const QUrl& source, const QVariantMap& properties)
{
    QQmlComponent component(&engine, source, QQmlComponent::PreferSynchronous);
    if (!component.isReady()) fail(source, component);
    std::unique_ptr<QObject> made(component.createWithInitialProperties(properties));
    if (component.isError()) fail(source, component);
    if (qobject_cast<QQuickWindow*>(made.get()) == nullptr)
        throw WindowError(source.toString().toStdString() + " is not a window");
    return std::unique_ptr<QQuickWindow>(static_cast<QQuickWindow*>(made.release()));
}

} // namespace

QUrl MainWindow::standardSource()
{
    return {"qrc:/qt/qml/Vorn/Main.qml"};
}

MainWindow::MainWindow(const QUrl& source, const QVariantMap& properties, UserDefaults& defaults,
                       const std::function<void()>& quit)
{
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    engine_.addImportPath("qrc:/qt/qml");
    window_ = windowOf(engine_, source, properties);
    geometry_ = std::make_unique<GeometryKeeper>(*window_, defaults);
    addWindowShortcuts(*window_, quit);
    QObject::connect(&engine_, &QQmlEngine::quit, window_.get(), quit);
    window_->create();
    hideTitleBar(window_->winId());
}

MainWindow::~MainWindow() = default;

void MainWindow::show(const std::function<void()>& onFirstFrame)
{
    // With this context object the call is made on this thread: frames are drawn on another.
    QObject::connect(window_.get(), &QQuickWindow::frameSwapped, window_.get(), onFirstFrame, Qt::SingleShotConnection);
    geometry_->show();
}

void MainWindow::bringToFront(const std::string& activationToken)
{
    // Qt reads the token from this variable, and removes it.
    if (!activationToken.empty()) qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activationToken));
    window_->setWindowStates(window_->windowStates() & ~Qt::WindowMinimized);
    window_->setVisible(true);
    window_->raise();
    window_->requestActivate();
    activateApplication();
}

void MainWindow::askForAttention()
{
    if (!bounceDockIcon()) window_->alert(0);
}

void MainWindow::dismiss()
{
    geometry_->save();
    window_->hide();
}

} // namespace vorn
