import QtQuick
import Tarvel

// The load-more footer of a list or grid: use it as the view's `footer` and give it the view
// (`target`) and the footer state. Scrolling to the end asks for the next page; pulling past the
// end or tapping the footer asks even after "没有更多了".
Item {
    id: root
    property Flickable target: null
    property RefreshFooterState footer: null
    readonly property bool loading: footer !== null && footer.loading
    readonly property bool filled: target !== null && target.contentHeight > target.height

    width: target ? target.width : implicitWidth
    implicitWidth: 320
    height: footer && footer.hidden ? 0 : 44
    visible: footer !== null && !footer.hidden

    Row {
        anchors.centerIn: parent
        spacing: 8
        Image {
            anchors.verticalCenter: parent.verticalCenter
            width: 18
            height: 18
            sourceSize: Qt.size(36, 36)
            source: "icons/refreshSpinner.svg"
            visible: root.loading
            RotationAnimator on rotation {
                from: 0
                to: 360
                duration: 900
                loops: Animation.Infinite
                running: root.loading && root.visible
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: root.footer ? root.footer.text : ""
            color: Theme.textSecondary
            font.pixelSize: Theme.fontSubhead
        }
    }

    MouseArea {
        anchors.fill: parent
        onClicked: if (root.footer) root.footer.pullUp()
    }

    Connections {
        target: root.target
        function onAtYEndChanged() {
            if (root.footer && root.filled && root.target.atYEnd)
                root.footer.reachEnd()
        }
        function onDraggingChanged() {
            if (root.footer && !root.target.dragging && root.target.verticalOvershoot > 20)
                root.footer.pullUp()
        }
    }
}
