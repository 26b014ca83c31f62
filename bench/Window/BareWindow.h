#pragma once

#include <memory>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

namespace vorn::bench {

/// A Qt Quick window with a line of text, as large as the application's: what any application of this kind costs.
class BareWindow {
public:
    BareWindow()
    {
        QQmlComponent component(&engine_);
        component.setData(R"(
            import QtQuick
            Window {
                id: root
                property bool moves: false
                width: 1180
                height: 760
                visible: true
                Rectangle {
                    anchors.fill: parent
                    SequentialAnimation on opacity {
                        loops: Animation.Infinite
                        running: root.moves
                        NumberAnimation { duration: 220; from: 1; to: 0 }
                        NumberAnimation { duration: 220; from: 0; to: 1 }
                    }
                    Text { anchors.centerIn: parent; text: "Vorn" }
                }
            })",
                          {});
        made_.reset(component.create());
    }

    QQuickWindow& window() { return dynamic_cast<QQuickWindow&>(*made_); }
    /// Fades all of it out and in again, forever.
    void fade() { made_->setProperty("moves", true); }

private:
    QQmlEngine engine_;
    std::unique_ptr<QObject> made_; ///< destroyed before its engine
};

} // namespace vorn::bench
