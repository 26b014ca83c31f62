#pragma once

#include <optional>
#include <string>

#include <QList>
#include <QRect>

namespace vorn {

/// A window's place, size and state, as kept between runs. A value; lengths are in device-independent pixels.
struct WindowGeometry {
    enum class State { normal, maximized, fullScreen };

    static constexpr QSize minimumSize{1040, 700};
    static constexpr QSize defaultSize{1180, 760};

    QRect content; ///< the content's place while the window is neither maximised nor full screen
    State state = State::normal;

    bool operator==(const WindowGeometry&) const = default;

    /// "x y width height", followed by "maximized" or "fullScreen" in these states.
    std::string text() const;
    /// Reads what `text` returns; absent for any other text.
    static std::optional<WindowGeometry> fromText(const std::string& text);

    /// The default size, or the screen's if that is smaller, but at least the minimum; centred on `screen`.
    static WindowGeometry centredOn(const QRect& screen);
    /// Whether the content has at least the minimum size, and its top edge is within reach on one of `screens`.
    bool fits(const QList<QRect>& screens) const;
};

} // namespace vorn
