import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// The panel beside an upload and its review. A payment is celebrated once.
PreviewPanel {
    id: root

    required property ScreenModel model

    readonly property bool isPaid: model.reward.standing === RewardCard.Paid
    property real counted: 1 // the part of the amount counted so far, 0…1

    caption: ""
    onIsPaidChanged: celebrate()
    Component.onCompleted: celebrate()

    function celebrate() {
        if (!isPaid || !model.takeMoment())
            return;
        if (Theme.motion(1) > 0)
            moment.start();
        else
            fade.start();
    }

    RewardCard {
        id: card
        amount: root.model.reward.amount
        anchors.centerIn: parent
        countedAmount: root.counted < 1 ? root.model.countedReward(root.counted) : amount
        heading: root.model.text.caption
        isAmount: root.model.reward.isAmount
        standing: root.model.reward.standing
        status: root.model.reward.status
        width: parent.width
    }
    FallingPaper {
        id: paper
        anchors.fill: parent
        anchors.margins: -Theme.panelPadding
        endColor: Theme.accentEnd
        startColor: Theme.accentStart
        visible: progress < 1
        Accessible.ignored: true
    }

    ParallelAnimation {
        id: moment

        NumberAnimation {
            duration: 350
            easing.type: Easing.OutBack
            from: 0.96
            property: "contentScale"
            target: card
            to: 1
        }
        NumberAnimation {
            duration: 700
            easing.type: Easing.OutCubic
            from: 0
            property: "counted"
            target: root
            to: 1
        }
        NumberAnimation {
            duration: 600
            easing.type: Easing.InOutQuad
            from: 0
            property: "checkDrawn"
            target: card
            to: 1
        }
        NumberAnimation {
            duration: 1800
            from: 0
            property: "progress"
            target: paper
            to: 1
        }
    }
    NumberAnimation {
        id: fade
        duration: Theme.fade
        from: 0
        property: "checkOpacity"
        target: card
        to: 1
    }
}
