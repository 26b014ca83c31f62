#include "tests/VornMac/Window/Reading.h"

#include <algorithm>

#include <QMetaEnum>

namespace vorn::testing {
namespace {

void readBelow(QAccessibleInterface* parent, int depth, int place, std::vector<Read>& reading)
{
    for (int index = 0; index < parent->childCount(); ++index) {
        QAccessibleInterface* child = parent->child(index);
        if (child == nullptr || child->state().invisible) continue;
        Read read{.role = child->role(),
                  .name = child->text(QAccessible::Name).toStdString(),
                  .description = child->text(QAccessible::Description).toStdString(),
                  .state = child->state(),
                  .actions = {},
                  .depth = depth,
                  .parent = place,
                  .item = qobject_cast<QQuickItem*>(child->object())};
        if (auto* actions = child->actionInterface()) {
            for (const QString& name : actions->actionNames()) read.actions.push_back(name.toStdString());
        }
        reading.push_back(std::move(read));
        readBelow(child, depth + 1, static_cast<int>(reading.size()) - 1, reading);
    }
}

} // namespace

bool Read::isControl() const
{
    return std::any_of(actions.begin(), actions.end(), [](const std::string& action) {
        return action == QAccessibleActionInterface::pressAction().toStdString() ||
               action == QAccessibleActionInterface::toggleAction().toStdString();
    });
}

std::vector<Read> readingOf(QQuickWindow& window)
{
    std::vector<Read> reading;
    readBelow(QAccessible::queryAccessibleInterface(&window), 0, -1, reading);
    return reading;
}

std::string nameOf(QAccessible::Role role)
{
    const char* name = QMetaEnum::fromType<QAccessible::Role>().valueToKey(role);
    return name != nullptr ? name : std::to_string(role);
}

std::vector<std::string> spokenLines(const std::vector<Read>& reading)
{
    std::vector<std::string> lines;
    for (const Read& read : reading) {
        if (read.role == QAccessible::Client || read.role == QAccessible::Window || read.role == QAccessible::NoRole)
            continue;
        std::string line = nameOf(read.role) + ": " + read.name;
        if (read.state.checkable) line += read.state.checked ? " (on)" : " (off)";
        if (!read.description.empty()) line += " – " + read.description;
        lines.push_back(std::move(line));
    }
    return lines;
}

bool doAction(QQuickItem* item, const QString& action)
{
    auto* interface = QAccessible::queryAccessibleInterface(item);
    auto* actions = interface != nullptr ? interface->actionInterface() : nullptr;
    if (actions == nullptr || !actions->actionNames().contains(action)) return false;
    actions->doAction(action);
    return true;
}

} // namespace vorn::testing
