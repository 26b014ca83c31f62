import QtQuick

/// A form's content, aligned to the top. Content that is too tall scrolls: it fades at each edge beyond which it
/// continues, and a bar beside it shows the position.
Item {
    id: root

    default property alias form: column.data
    /// The largest gap between two parts, if there is room; it is never smaller than the usual gap.
    property int widestGap: Theme.wideGap

    readonly property bool scrolls: scroller.interactive

    /// Scrolls until all of `item` is visible, if it is part of the form.
    function reveal(item: Item) {
        if (!scrolls || !holds(item))
            return;
        const top = item.mapToItem(column, 0, 0).y - scroller.ring - Theme.section;
        const bottom = top + item.height + 2 * (scroller.ring + Theme.section);
        scroller.scrollTo(Math.min(top, Math.max(scroller.contentY, bottom - scroller.height)));
    }

    /// Scrolls by a page; returns false if it cannot.
    function turnPage(down: bool): bool {
        if (scrolls)
            scroller.scrollTo(scroller.contentY + (down ? 1 : -1) * (scroller.height - 2 * Theme.section));
        return scrolls;
    }

    function holds(item: Item): bool {
        for (let each = item; each; each = each.parent) {
            if (each === column)
                return true;
        }
        return false;
    }

    Flickable {
        id: scroller

        /// Kept free around the content, so that a focus ring at its edge is not clipped.
        readonly property int ring: 8

        function scrollTo(y: real) {
            contentY = Math.max(0, Math.min(y, contentHeight - height));
        }

        anchors.bottomMargin: -ring
        anchors.fill: parent
        anchors.leftMargin: -ring
        anchors.rightMargin: -ring
        anchors.topMargin: -ring
        boundsBehavior: Flickable.StopAtBounds
        clip: interactive
        contentHeight: column.implicitHeight + 2 * ring
        interactive: contentHeight > height

        Column {
            id: column

            readonly property var parts: Array.from(children).filter(part => part.visible)
            readonly property real filled: parts.reduce((sum, part) => sum + part.height, 0)

            spacing: Math.max(Theme.wideGap, Math.min(root.widestGap, Math.floor((root.height - filled) / Math.max(1, parts.length - 1))))
            width: root.width
            x: scroller.ring
            y: scroller.ring
        }
    }
    EdgeFade {
        anchors.left: scroller.left
        anchors.right: scroller.right
        anchors.top: scroller.top
        opacity: root.scrolls ? Math.min(1, scroller.contentY / height) : 0
    }
    EdgeFade {
        anchors.bottom: scroller.bottom
        anchors.left: scroller.left
        anchors.right: scroller.right
        isAtBottom: true
        opacity: root.scrolls ? Math.min(1, (scroller.contentHeight - scroller.height - scroller.contentY) / height) : 0
    }
    Rectangle {
        color: Theme.tertiary
        height: Math.max(24, scroller.visibleArea.heightRatio * root.height)
        radius: width / 2
        visible: root.scrolls
        width: 4
        x: root.width + 14
        y: scroller.contentY / Math.max(1, scroller.contentHeight - scroller.height) * (root.height - height)
    }
}
