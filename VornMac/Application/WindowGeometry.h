#pragma once

#include <optional>
#include <string>

#include <QList>
#include <QRect>

namespace vorn {

/// Where a window is and how large, as it is kept between runs. A value; lengths are device-independent pixels.
struct WindowGeometry {
    enum class State { normal, maximized, fullScreen };

    static constexpr QSize minimumSize{1040, 700};
    static constexpr QSize defaultSize{1180, 760};

    QRect content; ///< the content's place while the window is neither maximised nor on the full screen
    State state = State::normal;

    bool operator==(const WindowGeometry&) const = default;

    /// "x y width height", and "maximized" or "fullScreen" where it is one.
    std::string text() const;
    /// Reads what `text` returned; nothing for anything else.
    static std::optional<WindowGeometry> fromText(const std::string& text);

    /// The default size in the middle of `screen`, or the minimum where the screen is smaller than that size.
    static WindowGeometry centredOn(const QRect& screen);
    /// Whether it can be used as it is: large enough, and where a user can take hold of its top edge on one of
    /// `screens`.
    bool fits(const QList<QRect>& screens) const;
};

} // namespace vorn
