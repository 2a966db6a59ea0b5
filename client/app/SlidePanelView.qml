import QtQuick
import Tarvel

// The sliding-panel root: the side panels lie under the centre, which slides right to reveal the
// left one and left to reveal the right one, following a horizontal drag or the controller.
Rectangle {
    id: view
    property SlidePanelController controller: null
    readonly property real restingX: controller ? (controller.revealed, controller.centerOffset(width)) : 0

    color: Theme.pageBackground
    clip: true

    ControllerView {
        anchors.left: parent.left
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        width: view.controller ? view.controller.leftRevealAmount : 0
        visible: center.x > 0
        controller: view.controller ? view.controller.leftPanel : null
    }
    ControllerView {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        width: view.controller ? view.width - view.controller.rightPeekAmount : 0
        visible: center.x < 0
        controller: view.controller ? view.controller.rightPanel : null
    }

    Item {
        id: center
        property real dragStartX: 0
        width: view.width
        height: view.height
        x: drag.active ? Math.max(-width, Math.min(width, dragStartX + drag.translation.x)) : view.restingX

        Behavior on x {
            enabled: !drag.active
            NumberAnimation { duration: 250; easing.type: Easing.OutCubic }
        }

        ControllerView {
            anchors.fill: parent
            controller: view.controller ? view.controller.centerPanel : null
        }
        // The thin border along the centre's edges.
        Rectangle {
            anchors.right: parent.left
            width: view.controller ? view.controller.borderWidth : 0
            height: parent.height
            color: Theme.textTertiary
        }
        Rectangle {
            anchors.left: parent.right
            width: view.controller ? view.controller.borderWidth : 0
            height: parent.height
            color: Theme.textTertiary
        }
        // While a side panel shows, a tap on the centre brings it back.
        MouseArea {
            anchors.fill: parent
            enabled: view.controller !== null && view.controller.revealed !== SlidePanelController.CenterShown
            onClicked: view.controller.showCenterPanel()
        }
        DragHandler {
            id: drag
            target: null
            yAxis.enabled: false
            onActiveChanged: {
                if (active) {
                    center.dragStartX = view.restingX
                } else if (view.controller) {
                    view.controller.finishPan(center.dragStartX + translation.x, view.width)
                }
            }
        }
    }
}
