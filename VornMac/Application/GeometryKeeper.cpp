#include "VornMac/Application/GeometryKeeper.h"

#include <chrono>

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>

namespace vorn {
namespace {

using namespace std::chrono_literals;

/// A window that is being maximised reports its new size before its new state. A size that has lasted this long belongs
/// to the current state.
constexpr auto settlingTime = 300ms;

QList<QRect> desktop()
{
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) screens.append(screen->availableGeometry());
    return screens;
}

} // namespace

GeometryKeeper::GeometryKeeper(QWindow& window, UserDefaults& defaults)
    : window_(window), defaults_(defaults), geometry_(kept())
{
    window_.setMinimumSize(WindowGeometry::minimumSize);
    window_.setGeometry(geometry_.content);
    window_.installEventFilter(this);
    settled_.setSingleShot(true);
    settled_.setInterval(settlingTime);
    connect(&settled_, &QTimer::timeout, this, [this] { note(); });
    const auto restart = [this] { settled_.start(); };
    connect(&window_, &QWindow::xChanged, this, restart);
    connect(&window_, &QWindow::yChanged, this, restart);
    connect(&window_, &QWindow::widthChanged, this, restart);
    connect(&window_, &QWindow::heightChanged, this, restart);
    connect(&window_, &QWindow::visibilityChanged, this, restart);
}

/// Notes the geometry immediately: after the window has closed, the timer would fire too late.
bool GeometryKeeper::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close) note();
    return QObject::eventFilter(watched, event);
}

WindowGeometry GeometryKeeper::kept() const
{
    const auto kept = WindowGeometry::fromText(defaults_.text(defaultsKey).value_or(""));
    if (kept && kept->fits(desktop())) return *kept;
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return WindowGeometry::centredOn(screen == nullptr ? QRect() : screen->availableGeometry());
}

void GeometryKeeper::show()
{
    switch (geometry_.state) {
    case WindowGeometry::State::normal: return window_.showNormal();
    case WindowGeometry::State::maximized: return window_.showMaximized();
    case WindowGeometry::State::fullScreen: return window_.showFullScreen();
    }
}

void GeometryKeeper::note()
{
    switch (window_.visibility()) {
    case QWindow::Windowed: geometry_ = {.content = window_.geometry()}; break;
    case QWindow::Maximized: geometry_.state = WindowGeometry::State::maximized; break;
    case QWindow::FullScreen: geometry_.state = WindowGeometry::State::fullScreen; break;
    default: break; // minimised or hidden: never restored
    }
}

void GeometryKeeper::save()
{
    note();
    settled_.stop();
    const std::string text = geometry_.text();
    if (defaults_.text(defaultsKey) != text) defaults_.setText(defaultsKey, text);
}

} // namespace vorn
