import QtQuick
import Vorn.System

/// The fonts of the window: the system's family, in sizes that grow with the user's text size.
QtObject {
    id: root

    readonly property font title: of(28, Font.DemiBold)
    readonly property font label: of(13, Font.Medium)
    readonly property font body: of(14, Font.Normal)
    readonly property font bodyMedium: of(14, Font.Medium)
    readonly property font caption: of(12, Font.Normal)
    readonly property font button: of(14, Font.Medium)

    readonly property font amount: of(44, Font.DemiBold)
    readonly property font quietAmount: of(36, Font.DemiBold)
    readonly property font badge: of(10, Font.Bold)

    function of(size: int, weight: int): font {
        return Qt.font({
            family: Appearance.fontFamily,
            pixelSize: Math.round(size * Appearance.textScale),
            weight: weight
        });
    }
}
