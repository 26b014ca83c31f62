#include "VornMac/System/Appearance.h"

#include "VornMac/System/SystemLook.h"

#include <algorithm>
#include <utility>

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlEngine>
#include <QStyleHints>

namespace vorn {
namespace {

constexpr double largestTextScale = 2;

bool systemIsDark()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    if (const auto scheme = QGuiApplication::styleHints()->colorScheme(); scheme != Qt::ColorScheme::Unknown)
        return scheme == Qt::ColorScheme::Dark;
#endif
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

} // namespace

Appearance& Appearance::shared()
{
    static Appearance appearance;
    return appearance;
}

Appearance* Appearance::create(QQmlEngine* /*engine*/, QJSEngine* /*scripts*/)
{
    QQmlEngine::setObjectOwnership(&shared(), QQmlEngine::CppOwnership);
    return &shared();
}

Appearance::Appearance()
{
    setTextScale(systemTextScale());
    update();
    followSystem();
}

void Appearance::followSystem()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, this, &Appearance::update);
#endif
    if (auto* application = QCoreApplication::instance()) application->installEventFilter(this);
}

bool Appearance::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange) update();
    return QObject::eventFilter(watched, event);
}

void Appearance::update()
{
    const bool isDark = forced_ ? *forced_ == Theme::dark : systemIsDark();
    if (std::exchange(isDark_, isDark) != isDark) emit isDarkChanged();
}

void Appearance::setTheme(std::optional<Theme> theme)
{
    forced_ = theme;
    update();
}

void Appearance::setReducesMotion(bool reduces)
{
    if (std::exchange(reducesMotion_, reduces) != reduces) emit reducesMotionChanged();
}

void Appearance::setTextScale(double scale)
{
    const double bounded = std::clamp(scale, 1.0, largestTextScale);
    if (std::exchange(textScale_, bounded) != bounded) emit textScaleChanged();
}

QString Appearance::fontFamily() const
{
    return systemFontFamily();
}

} // namespace vorn
