#include "tests/VornMac/Window/WindowFixture.h"

#include "VornMac/System/Announcer.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include <QAccessible>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlContext>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(VornPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_ComponentsPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_DrawingPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_SystemPlugin)
Q_IMPORT_QML_PLUGIN(Vorn_ViewPlugin)

namespace vorn::testing {
namespace {

std::vector<std::string>* collected = nullptr;

void collect(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& message)
{
    if (collected != nullptr) collected->push_back(message.toStdString());
}

} // namespace

QString accessibleName(QQuickItem* item)
{
    auto* interface = QAccessible::queryAccessibleInterface(item);
    if (interface == nullptr || interface->state().invisible) return {};
    return interface->text(QAccessible::Name);
}

std::vector<QQuickItem*> itemsBelow(QQuickItem* root, const std::function<bool(QQuickItem*)>& keeps)
{
    std::vector<QQuickItem*> items;
    if (!keeps(root)) return items;
    items.push_back(root);
    for (auto* child : root->childItems()) {
        const auto below = itemsBelow(child, keeps);
        items.insert(items.end(), below.begin(), below.end());
    }
    return items;
}

WindowFixture::WindowFixture(Motion motion)
{
    collected = &warnings_;
    qInstallMessageHandler(&collect);
    Appearance::shared().setTheme(Appearance::Theme::light);
    Appearance::shared().setReducesMotion(motion == Motion::reduced);
    Appearance::shared().setTextScale(1);
    model.messages.database().execute("PRAGMA synchronous = OFF"); // no test simulates a power cut
    model.onLaunched = [this] { makeWindow(); };
    QAccessible::setActive(true); // otherwise controls are not prepared for readers
    announcements_ = QObject::connect(&Announcer::shared(), &Announcer::announced,
                                      [this](QObject* item, const QString& text) { noteAnnouncement(item, text); });
}

WindowFixture::~WindowFixture()
{
    QObject::disconnect(announcements_);
    engine_.reset();
    screenModel_.reset();
    model.quit();
    qInstallMessageHandler(nullptr);
    collected = nullptr;
    for (const std::string& warning : warnings_) ADD_FAILURE() << warning;
}

void WindowFixture::makeWindow()
{
    screenModel_ = std::make_unique<ScreenModel>(model.model(), model.context, model.clock);
    engine_ = std::make_unique<QQmlApplicationEngine>();
    engine_->addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine_->setInitialProperties({{QStringLiteral("model"), QVariant::fromValue(screenModel_.get())}});
    engine_->load(QUrl(QStringLiteral("qrc:/qt/qml/Vorn/Main.qml")));
    if (engine_->rootObjects().isEmpty())
        throw std::runtime_error("there is no window: " + ::testing::PrintToString(warnings_));
    window_ = qobject_cast<QQuickWindow*>(engine_->rootObjects().constFirst());
    window_->show();
    window_->requestActivate();
}

QObject& WindowFixture::theme()
{
    QQmlComponent finder(engine_.get());
    finder.setData("import QtQml\nimport Vorn.Components\nQtObject { readonly property QtObject theme: Theme }", {});
    const std::unique_ptr<QObject> found(finder.create());
    if (!found) throw std::runtime_error(finder.errorString().toStdString());
    return *found->property("theme").value<QObject*>();
}

void WindowFixture::settle()
{
    constexpr int rounds = 4; // layouts wait for a frame, and their effects for the next one
    for (int round = 0; round < rounds; ++round) {
        model.run();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

QQuickItem* WindowFixture::named(const QString& name) const
{
    const auto isVisible = [](QQuickItem* item) { return item->isVisible(); };
    for (auto* item : itemsBelow(window_->contentItem(), isVisible)) {
        if (accessibleName(item) == name) return item;
    }
    return nullptr;
}

std::vector<std::string> WindowFixture::names() const
{
    std::vector<std::string> names;
    const auto isVisible = [](QQuickItem* item) { return item->isVisible(); };
    for (auto* item : itemsBelow(window_->contentItem(), isVisible)) {
        if (const QString name = accessibleName(item); !name.isEmpty()) names.push_back(name.toStdString());
    }
    return names;
}

bool WindowFixture::isEnabled(const QString& name) const
{
    const auto* item = named(name);
    if (item == nullptr) {
        ADD_FAILURE() << name.toStdString() << " is not shown, but " << ::testing::PrintToString(names());
        return false;
    }
    return item->isEnabled();
}

QQuickItem* WindowFixture::expect(const QString& name) const
{
    auto* item = named(name);
    if (item == nullptr)
        ADD_FAILURE() << name.toStdString() << " is not shown, but " << ::testing::PrintToString(names());
    return item;
}

void WindowFixture::click(const QString& name)
{
    if (auto* item = expect(name)) clickAt(item->mapToScene(QPointF(item->width() / 2, item->height() / 2)));
}

void WindowFixture::clickAt(QPointF place)
{
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, place, window_->mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(window_, &event);
    }
    settle();
}

void WindowFixture::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers);
        QCoreApplication::sendEvent(window_, &event);
    }
    settle();
}

void WindowFixture::pressOn(const QString& name, Qt::Key key)
{
    auto* item = expect(name);
    if (item == nullptr) return;
    item->forceActiveFocus(Qt::TabFocusReason);
    press(key);
}

void WindowFixture::pressByReader(const QString& name)
{
    auto* item = expect(name);
    if (item == nullptr) return;
    const auto* interface = QAccessible::queryAccessibleInterface(item);
    const QString action = interface->state().checkable ? QAccessibleActionInterface::toggleAction()
                                                        : QAccessibleActionInterface::pressAction();
    if (!doAction(item, action)) ADD_FAILURE() << name.toStdString() << " cannot be pressed by a screen reader";
    settle();
}

std::string WindowFixture::focused() const
{
    auto* item = window_->activeFocusItem();
    return item != nullptr ? accessibleName(item).toStdString() : "";
}

void WindowFixture::noteAnnouncement(QObject* item, const QString& text)
{
    announced_.push_back(text.toStdString());
    // Older versions of Qt speak the item's name, not the text.
    EXPECT_EQ(accessibleName(qobject_cast<QQuickItem*>(item)).toStdString(), text.toStdString());
}

void WindowFixture::lay()
{
    settle();
    picture(); // drawing lays everything out
}

QImage WindowFixture::picture()
{
    settle();
    return window_->grabWindow();
}

} // namespace vorn::testing
