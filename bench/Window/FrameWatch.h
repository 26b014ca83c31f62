#pragma once

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

#include <QObject>
#include <QQuickWindow>

namespace vorn::bench {

inline double milliseconds(std::chrono::steady_clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Measures each frame of a window that draws on its own thread: from the moment its turn comes to when it is on the
/// screen, with the layout, what is taken over from the items, and the drawing.
class FrameWatch final : public QObject {
public:
    using Instant = std::chrono::steady_clock::time_point;

    /// `window` outlives this object.
    explicit FrameWatch(QQuickWindow& window);

    /// The frames since this was last asked, in milliseconds.
    std::vector<double> take() { return std::exchange(frames_, {}); }
    std::size_t count() const { return frames_.size(); }
    Instant last() const { return last_; } ///< when it was on the screen

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void note();

    std::optional<Instant> begin_;
    Instant last_;
    std::vector<double> frames_;
};

} // namespace vorn::bench
