#include "VornMac/Application/VornMacApp.h"

#include "Platform/Desktop/SystemPresence.h"
#include "VornMac/Application/ApplicationMenus.h"
#include "VornMac/Model/Timing.h"
#include "VornMac/System/Appearance.h"
#include "VornMac/System/ThisApplication.h"
#include "VornMacCore/Wire/Application.h"

#include <chrono>
#include <cstdio>
#include <utility>

#include <QDesktopServices>
#include <QGuiApplication>

namespace vorn {
namespace {

using namespace std::chrono_literals;

std::filesystem::path executable()
{
    return QCoreApplication::applicationFilePath().toStdString();
}

/// "app.vorn.mac" belongs to the domain "vorn.app".
QString domainOf(const std::string& identifier)
{
    const auto parts = QString::fromStdString(identifier).split('.');
    return parts.size() < 2 ? QString() : parts[1] + '.' + parts[0];
}

} // namespace

void VornMacApp::describe()
{
    QGuiApplication::setApplicationName("VornMac");
    QGuiApplication::setApplicationDisplayName("Vorn");
    QGuiApplication::setApplicationVersion(QString::fromStdString(applicationBundle().version()));
    QGuiApplication::setOrganizationName("Vorn");
    QGuiApplication::setOrganizationDomain(domainOf(bundleIdentifier()));
    QGuiApplication::setDesktopFileName(QString::fromStdString(bundleIdentifier()));
}

VornMacApp::VornMacApp(QuitWatch& watch, LayeredDefaults::Line line, QUrl source)
    : quitWatch_(watch), source_(std::move(source)), defaults_(std::move(line)),
      services_(defaults_.get(), messagesDatabase(defaults_.get()),
                {.keepsSession = keepsSession(defaults_.get()),
                 .application = applicationOf(executable()),
                 .quit = [this] { context().post([this] { quit(); }); }})
{
}

VornMacApp::~VornMacApp()
{
    context().shutDown(LiveServices::patienceForJobs);
}

AppModel& VornMacApp::model()
{
    if (!model_) {
        AppServices services = services_.forModel(context());
        services.shortestUpload = timing::uploadIsShown;
        model_.emplace(std::move(services));
    }
    return *model_;
}

MainWindow& VornMacApp::mainWindow()
{
    if (!mainWindow_) {
        appearance_.emplace(defaults_.get());
        screenModel_.emplace(model(), context(), services_.clock());
        const QVariantMap properties{{"model", QVariant::fromValue(&*screenModel_)}};
        mainWindow_.emplace(source_, properties, defaults_.get(), [this] { quit(); });
    }
    return *mainWindow_;
}

bool VornMacApp::isFirst()
{
    const Log log(bundleIdentifier(), "app");
    instance_.emplace(
        context(), [this] { mainWindow().bringToFront(); }, SingleInstance::Rendezvous{.name = bundleIdentifier()},
        log);
    if (instance_->start() == SingleInstance::Start::silent)
        std::fputs("VornMac: another one is already running, but does not answer\n", stderr);
    return instance_->start() == SingleInstance::Start::first;
}

void VornMacApp::keepPresence()
{
    const ApplicationNames names{.identifier = bundleIdentifier(),
                                 .name = QGuiApplication::applicationDisplayName().toStdString()};
    presence_ = systemPresence(names, [this](const std::string& token) { mainWindow().bringToFront(token); });
    QQuickWindow& window = mainWindow().window();
    presenceKeeper_.emplace(model(), *presence_,
                            PresenceKeeper::Window{
                                .isActive = [&window] { return window.isActive(); },
                                .reducesMotion = [] { return Appearance::shared().reducesMotion(); },
                                .askForAttention = [this] { mainWindow().askForAttention(); },
                            });
    QObject::connect(&window, &QWindow::activeChanged, &*presenceKeeper_, [this, &window] {
        if (window.isActive()) presenceKeeper_->withdraw();
    });
}

int VornMacApp::run()
{
    if (!isFirst()) return 0;
    delegate_.emplace([this] { quit(); });
    mainWindow();
    keepPresence();
    AppDelegate::didFinishLaunching();
    setMenuBar(applicationMenus(
        ThisApplication::notices().toString().toStdString(),
        [](const std::string& address) { QDesktopServices::openUrl(QUrl(QString::fromStdString(address))); },
        [this] { quit(); }));
    mainWindow().show([] { AppDelegate::didShowWindow(); });
    delivery_.emplace(quitWatch_, context(), [this] { quit(); });
    QGuiApplication::exec();
    quit(); // the system may have ended the loop itself
    return quitWatch_.exitStatus();
}

void VornMacApp::quit()
{
    instance_.reset(); // from here on, a new start must not be turned away
    if (mainWindow_) mainWindow_->dismiss();
    QCoreApplication::exit();
}

} // namespace vorn
