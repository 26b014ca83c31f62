#pragma once

#include <optional>

@class VornDockTile;

namespace vorn {

/// A bar on the application's icon in the Dock. Threads: the main one.
class DockProgress {
public:
    /// Shows a bar at `percent`, 0…100, or the icon alone.
    void show(std::optional<int> percent);

private:
    VornDockTile* tile_ = nullptr; ///< made with the first bar
};

} // namespace vorn
