import QtQuick

/// A form beside a preview, as wide as is good to read and in the middle of any window. A form that is too high for the
/// window scrolls.
FocusScope {
    id: root

    required property int step // from 0
    required property int totalSteps
    required property string position // of the step, for a screen reader
    default property alias form: column.data
    property alias preview: area.data

    readonly property real columnsGap: Math.max(48, Math.min(96, (width - 2 * Theme.sideMargin - Theme.panelWidth) * 0.12))
    readonly property real contentWidth: Math.min(width - 2 * Theme.sideMargin, Theme.widestContent)

    readonly property Item focused: Window.activeFocusItem
    onFocusedChanged: scroller.reveal(focused)

    Flickable {
        id: scroller

        /// Scrolls until `item` is seen whole, if it stands in the form.
        function reveal(item: Item) {
            if (!interactive || !scroller.holds(item))
                return;
            const top = item.mapToItem(contentItem, 0, 0).y - column.x;
            const bottom = top + item.height + 2 * column.x;
            contentY = Math.max(0, Math.min(top, Math.max(contentY, bottom - height)));
        }
        function holds(item: Item): bool {
            for (let each = item; each; each = each.parent) {
                if (each === column)
                    return true;
            }
            return false;
        }

        readonly property real room: root.height - Theme.topMargin - Theme.bottomMargin

        anchors.left: parent.left
        anchors.leftMargin: (root.width - root.contentWidth) / 2 - 8
        boundsBehavior: Flickable.StopAtBounds
        clip: contentHeight > height
        contentHeight: Math.max(height, column.implicitHeight + 16)
        interactive: contentHeight > height
        width: Math.min(Theme.formWidth, root.contentWidth - root.columnsGap - Theme.panelWidth) + 16
        height: room + 8
        y: Theme.topMargin - 4

        Column {
            id: column
            spacing: Theme.wideGap
            width: scroller.width - 16
            x: 8
            y: Math.max(8, (scroller.height - implicitHeight) / 2)

            StepDots {
                bottomPadding: 4
                current: root.step
                position: root.position
                total: root.totalSteps
            }
        }
    }

    Item {
        id: area
        anchors.bottom: parent.bottom
        anchors.bottomMargin: bottomRoom
        anchors.right: parent.right
        anchors.rightMargin: (root.width - root.contentWidth) / 2
        anchors.top: parent.top
        anchors.topMargin: Theme.topMargin + spare
        width: Theme.panelWidth

        // On a high window the panel keeps its shape, and stays level with the form.
        readonly property real spare: Math.max(0, (root.height - Theme.topMargin - Theme.bottomMargin - 680) / 2)
        readonly property real bottomRoom: Theme.bottomMargin + spare
    }
}
