#pragma once

#include "Platform/Base/UserDefaults.h"
#include "VornMac/Application/WindowGeometry.h"

#include <QObject>
#include <QTimer>
#include <QWindow>

namespace vorn {

/// Restores a window's place, size and state from an earlier run, and saves them for later ones. Threads: the window's.
class GeometryKeeper final : public QObject {
public:
    static constexpr const char* defaultsKey = "MainWindowGeometry";

    /// Places `window`, which is not yet shown. Both outlive this object.
    GeometryKeeper(QWindow& window, UserDefaults& defaults);

    /// Shows the window for the first time, in the state that was kept.
    void show();
    /// Call before the window is hidden for good.
    void save();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    WindowGeometry kept() const;
    void note();

    QWindow& window_;
    UserDefaults& defaults_;
    WindowGeometry geometry_;
    QTimer settled_;
};

} // namespace vorn
