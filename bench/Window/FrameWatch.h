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

/// How long a frame took, in milliseconds.
struct Frame {
    double wall = 0; ///< from the update request to the screen
    double cpu = 0;  ///< CPU time of the window's thread meanwhile, which excludes other programs
};

/// The `wall` times of `frames`.
std::vector<double> wallTimes(const std::vector<Frame>& frames);

/// Measures each frame of a window that draws on the thread it lives on, not on a render thread: layout,
/// synchronisation with the items, and drawing.
class FrameWatch final : public QObject {
public:
    using Instant = std::chrono::steady_clock::time_point;

    /// `window` outlives this object.
    explicit FrameWatch(QQuickWindow& window);

    /// The frames since the last call.
    std::vector<Frame> take() { return std::exchange(frames_, {}); }
    std::size_t count() const { return frames_.size(); }
    Instant last() const { return last_; } ///< when the last frame was on the screen

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void note();

    struct Begin {
        Instant wall;
        std::chrono::nanoseconds cpu;
    };

    std::optional<Begin> begin_;
    Instant last_;
    std::vector<Frame> frames_;
};

} // namespace vorn::bench
