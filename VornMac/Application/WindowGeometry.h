#pragma once

#include <optional>
#include <string>

#include <QList>
#include <QRect>

namespace vorn {

/// A window's place and size, as kept between runs. A value; lengths are device-independent pixels.
struct WindowGeometry {
    enum class State { normal, maximized, fullScreen };

    static constexpr QSize minimumSize{1040, 700};
    static constexpr QSize defaultSize{1180, 760};

    QRect content; ///< the content's place while the window is neither maximised nor full screen
    State state = State::normal;

    bool operator==(const WindowGeometry&) const = default;

    /// "x y width height", followed by "maximized" or "fullScreen" if it is one.
    std::string text() const;
    /// Reads a text made by `text`; nothing for any other.
    static std::optional<WindowGeometry> fromText(const std::string& text);

    /// The default size in the middle of `screen`, or the minimum if the screen is smaller.
    static WindowGeometry centredOn(const QRect& screen);
    /// Whether it is large enough, and a user can reach its top edge on one of `screens`.
    bool fits(const QList<QRect>& screens) const;
};

} // namespace vorn
