import QtQuick
import Vorn.Components
import Vorn.View

/// Every message, oldest first, under its day. The arrow keys move to the next message, and scroll through one that is
/// taller than the view.
ListView {
    id: root

    required property Everything page

    readonly property real lineStep: 60

    Accessible.name: Labels.conversation
    Accessible.role: Accessible.List
    activeFocusOnTab: count > 0
    boundsBehavior: Flickable.StopAtBounds
    cacheBuffer: 0 // a row buffered ahead may be created after a search has removed it
    clip: true
    highlightMoveDuration: 0
    keyNavigationEnabled: false
    model: page.messages
    objectName: "everything"
    reuseItems: true
    section.property: "day"

    // Scrolls to a row, not a position: heights are estimates, and a list dragged beyond its end creates all rows on
    // the way back.
    ScrollBarStyle {
        id: bar
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        anchors.top: parent.top
        orientation: Qt.Vertical
        parent: root
        size: root.visibleArea.heightRatio
        onPositionChanged: {
            if (pressed)
                root.jumpTo(position / (1 - size));
        }
    }
    Binding {
        property: "position"
        target: bar
        value: root.visibleArea.yPosition
        when: !bar.pressed
    }

    section.delegate: Words {
        required property string section

        Accessible.role: Accessible.Heading
        bottomPadding: 4
        height: Math.ceil(implicitHeight)
        color: Theme.secondary
        font: Theme.fonts.label
        leftPadding: 24
        text: section
        topPadding: 20
        width: ListView.view ? ListView.view.width : 0
    }
    delegate: EverythingRow {
        Accessible.focusable: ListView.isCurrentItem
        width: ListView.view ? ListView.view.width : 0
        // Hides pooled rows from screen readers as well.
        ListView.onPooled: visible = false
        ListView.onReused: visible = true
    }

    onActiveFocusChanged: {
        if (activeFocus)
            goTo(currentIndex, ListView.Contain);
    }
    Keys.onPressed: event => event.accepted = root.moves(event.key)

    /// Scrolls to the row at the fraction `part` of the list, 0…1.
    function jumpTo(part: real) {
        positionViewAtIndex(Math.round(Math.max(0, Math.min(1, part)) * (count - 1)), ListView.Beginning);
    }

    /// Moves as `key` says; returns false for an empty list and for a key that does not move.
    function moves(key: int): bool {
        if (count === 0)
            return false;
        switch (key) {
        case Qt.Key_Up:
            step(-1);
            return true;
        case Qt.Key_Down:
            step(1);
            return true;
        case Qt.Key_PageUp:
            turnPage(contentY, ListView.End);
            return true;
        case Qt.Key_PageDown:
            turnPage(contentY + height - 1, ListView.Beginning);
            return true;
        case Qt.Key_Home:
            goTo(0, ListView.Beginning);
            return true;
        case Qt.Key_End:
            goTo(count - 1, ListView.End);
            return true;
        }
        return false;
    }

    function step(by: int) {
        const top = contentY;
        const bottom = contentY + height;
        if (!currentItem || currentItem.y + currentItem.height <= top || currentItem.y >= bottom)
            return goTo(indexNear(by > 0 ? top : bottom - 1, by), ListView.Contain);
        const hidden = by > 0 ? currentItem.y + currentItem.height - bottom : top - currentItem.y;
        if (hidden > 1) {
            contentY += by * Math.min(hidden, lineStep);
            return;
        }
        const next = currentIndex + by;
        goTo(next, ListView.Contain);
        if (by < 0 && next >= 0 && currentItem.height > height)
            positionViewAtIndex(next, ListView.End); // entered from below: show its end first
    }

    /// Turns a page: moves the row at the edge `at` to the opposite edge, or scrolls within it if it fills the view.
    function turnPage(at: real, place: int) {
        const down = place === ListView.Beginning;
        const index = indexNear(at, down ? -1 : 1);
        if (index >= 0 && itemAtIndex(index).height >= height)
            contentY = Math.max(originY, Math.min(originY + contentHeight - height, contentY + (down ? 1 : -1) * (height - lineStep)));
        else
            goTo(index, place);
    }

    /// The row at `at`, or if a heading is there, the next row in the direction `by`; -1 if none is in view.
    function indexNear(at: real, by: int): int {
        let index = -1;
        for (let y = at; index < 0 && y >= contentY && y < contentY + height; y += 8 * by)
            index = indexAt(width / 2, y);
        return index;
    }

    function goTo(index: int, place: int) {
        if (index < 0 || index >= count)
            return;
        currentIndex = index;
        positionViewAtIndex(index, place);
    }
}
