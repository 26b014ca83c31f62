#include "VornMac/Application/WindowShortcuts.h"

#include <QKeySequence>
#include <QShortcut>

namespace vorn {
namespace {

/// The desktop's own keys, and `usual`, which works on desktops unknown to Qt as well.
QList<QKeySequence> keysFor(QKeySequence::StandardKey action, const QKeySequence& usual)
{
    auto keys = QKeySequence::keyBindings(action);
    if (!keys.contains(usual)) keys.append(usual);
    return keys;
}

void add(QWindow& window, const QList<QKeySequence>& keys, const std::function<void()>& action)
{
    auto* const shortcut = new QShortcut(&window); // owned by the window
    shortcut->setKeys(keys);
    QObject::connect(shortcut, &QShortcut::activated, &window, action);
}

} // namespace

void addWindowShortcuts(QWindow& window, const std::function<void()>& quit)
{
    add(window, keysFor(QKeySequence::Close, Qt::CTRL | Qt::Key_W), [&window] { window.close(); });
    add(window, keysFor(QKeySequence::Quit, Qt::CTRL | Qt::Key_Q), quit);
    add(window, {Qt::CTRL | Qt::Key_M}, [&window] { window.showMinimized(); });
}

} // namespace vorn
