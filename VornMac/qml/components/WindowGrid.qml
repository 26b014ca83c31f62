import QtQuick

/// Where the parts of a window of this size stand: the same on every screen, so that nothing but their content changes.
QtObject {
    id: root

    required property real width
    required property real height

    readonly property real contentWidth: Math.min(width - 2 * Theme.sideMargin, Theme.widestContent)
    readonly property real left: (width - contentWidth) / 2
    readonly property real right: left + contentWidth
    readonly property real columnsGap: Math.max(48, Math.min(96, (width - 2 * Theme.sideMargin - Theme.panelWidth) * 0.12))
    /// A window that is not shown yet has no size; readers are told nothing by what has none.
    readonly property real formWidth: Math.max(400, Math.min(Theme.formWidth, contentWidth - columnsGap - Theme.panelWidth))
    /// On a high window the form and the panel keep their shape.
    readonly property real spare: Math.max(0, (height - Theme.topMargin - Theme.bottomMargin - Theme.highestContent) / 2)
    readonly property real top: Theme.topMargin + spare
    readonly property real bottom: height - Theme.bottomMargin - spare
}
