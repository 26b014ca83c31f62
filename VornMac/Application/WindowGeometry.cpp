#include "VornMac/Application/WindowGeometry.h"

#include <algorithm>
#include <initializer_list>
#include <sstream>

namespace vorn {
namespace {

constexpr const char* maximized = "maximized";
constexpr const char* fullScreen = "fullScreen";
constexpr int largestNumber = 100'000; // larger than all screens; sums of such numbers do not overflow
constexpr QSize gripSize{120, 24};     // how much of the top edge a user needs to drag the window by

std::optional<WindowGeometry::State> stateFrom(const std::string& word)
{
    if (word.empty()) return WindowGeometry::State::normal;
    if (word == maximized) return WindowGeometry::State::maximized;
    if (word == fullScreen) return WindowGeometry::State::fullScreen;
    return std::nullopt;
}

bool isSensible(int number)
{
    return number >= -largestNumber && number <= largestNumber;
}

bool showsGrip(const QRect& content, const QRect& screen)
{
    const QRect seen = QRect(content.topLeft(), QSize(content.width(), gripSize.height())).intersected(screen);
    return seen.width() >= gripSize.width() && seen.height() >= gripSize.height();
}

} // namespace

std::string WindowGeometry::text() const
{
    std::ostringstream text;
    text << content.x() << ' ' << content.y() << ' ' << content.width() << ' ' << content.height();
    if (state != State::normal) text << ' ' << (state == State::maximized ? maximized : fullScreen);
    return text.str();
}

std::optional<WindowGeometry> WindowGeometry::fromText(const std::string& text)
{
    std::istringstream stream(text);
    int x = 0, y = 0, width = 0, height = 0;
    if (!(stream >> x >> y >> width >> height)) return std::nullopt;
    if (!std::ranges::all_of(std::initializer_list<int>{x, y, width, height}, isSensible)) return std::nullopt;
    std::string word, more;
    stream >> word;
    const auto state = stateFrom(word);
    if (!state || stream >> more) return std::nullopt;
    return WindowGeometry{.content = QRect(x, y, width, height), .state = *state};
}

WindowGeometry WindowGeometry::centredOn(const QRect& screen)
{
    QRect content(QPoint(), defaultSize.boundedTo(screen.size()).expandedTo(minimumSize));
    content.moveCenter(screen.center());
    content.moveTopLeft({std::max(content.x(), screen.x()), std::max(content.y(), screen.y())});
    return {.content = content};
}

bool WindowGeometry::fits(const QList<QRect>& screens) const
{
    return content.width() >= minimumSize.width() && content.height() >= minimumSize.height() &&
           std::ranges::any_of(screens, [this](const QRect& screen) { return showsGrip(content, screen); });
}

} // namespace vorn
