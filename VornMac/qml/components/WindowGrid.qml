import QtQuick

/// The positions of the window's parts at its current size: the same on every screen, so that only the content changes.
/// The parts grow with the window up to a readable width, then stay centred in it, with the mark and the account menu
/// at their edges.
QtObject {
    id: root

    required property real width
    required property real height

    readonly property real room: width - Theme.leftMargin - Theme.rightMargin
    readonly property real contentWidth: Math.min(room, Theme.widestContent)
    readonly property real left: Theme.leftMargin + Math.floor((room - contentWidth) / 2)
    readonly property real right: left + contentWidth
    readonly property real columnsGap: Math.max(48, Math.min(96, (room - Theme.panelWidth) * 0.12))
    readonly property real widestForm: Math.min(Theme.widestForm, Theme.formWidth + Math.max(0, Math.floor((contentWidth - Theme.idealContent) * 0.44)))
    /// Never below 400: a window has no size before it is shown, and screen readers skip elements without a size.
    readonly property real formWidth: Math.max(400, Math.min(widestForm, contentWidth - columnsGap - Theme.panelWidth))
    readonly property real spare: Math.max(0, Math.floor((height - Theme.topMargin - Theme.bottomMargin - Theme.highestContent) / 2))
    readonly property real top: Theme.topMargin + spare
    readonly property real bottom: height - Theme.bottomMargin - spare
}
