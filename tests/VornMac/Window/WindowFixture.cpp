#include "tests/VornMac/Window/WindowFixture.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QGuiApplication>
#include <QMouseEvent>
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

WindowFixture::WindowFixture()
{
    collected = &warnings_;
    qInstallMessageHandler(&collect);
    Appearance::shared().setTheme(Appearance::Theme::light);
    Appearance::shared().setReducesMotion(true);
    Appearance::shared().setTextScale(1);
    model.onLaunched = [this] { makeWindow(); };
}

WindowFixture::~WindowFixture()
{
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
    ASSERT_FALSE(engine_->rootObjects().isEmpty());
    window_ = qobject_cast<QQuickWindow*>(engine_->rootObjects().constFirst());
    window_->show();
    window_->requestActivate();
}

void WindowFixture::settle()
{
    constexpr int rounds = 4; // layouts wait for a frame, and what they change for the next one
    for (int round = 0; round < rounds; ++round) {
        model.runAll();
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

void WindowFixture::click(const QString& name)
{
    auto* item = named(name);
    if (item == nullptr) {
        ADD_FAILURE() << name.toStdString() << " is not shown, but " << ::testing::PrintToString(names());
        return;
    }
    const QPointF place = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
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

QImage WindowFixture::picture()
{
    settle();
    return window_->grabWindow();
}

} // namespace vorn::testing
