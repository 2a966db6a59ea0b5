import QtQuick
import Tarvel

// The pull-down header of a list or grid (`target`): an arrow and the header state's text above
// the list's top, a spinning ring while refreshing. Place it over the list (same geometry); it
// reports the pull and the release to `header` and keeps itself in view while refreshing.
Item {
    id: root
    property Flickable target: null
    property RefreshHeaderState header: null
    readonly property real pulled: target ? Math.max(0, -target.verticalOvershoot) : 0
    readonly property bool refreshing: header !== null && header.refreshing

    height: header ? header.threshold : 54
    clip: true
    visible: refreshing || pulled > 0

    // The part of the header uncovered by the pull (or all of it while refreshing).
    Item {
        id: band
        width: parent.width
        height: root.height
        y: root.refreshing ? 0 : Math.min(0, root.pulled - root.height)

        Row {
            anchors.centerIn: parent
            spacing: 10

            Image {
                anchors.verticalCenter: parent.verticalCenter
                width: 20
                height: 20
                sourceSize: Qt.size(40, 40)
                source: root.refreshing ? "icons/refreshSpinner.svg" : "icons/refreshArrow.svg"
                rotation: root.header && root.header.state === RefreshHeaderState.ReadyToRefresh ? 180 : 0
                Behavior on rotation {
                    enabled: !root.refreshing
                    NumberAnimation { duration: 150 }
                }
                RotationAnimator on rotation {
                    from: 0
                    to: 360
                    duration: 900
                    loops: Animation.Infinite
                    running: root.refreshing && root.visible
                }
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: root.header ? root.header.text : ""
                color: Theme.textSecondary
                font.pixelSize: Theme.fontSubhead
            }
        }
    }

    Connections {
        target: root.target
        function onVerticalOvershootChanged() {
            if (root.header && root.target.dragging)
                root.header.pull(root.pulled)
        }
        function onDraggingChanged() {
            if (root.header && !root.target.dragging)
                root.header.release()
        }
    }

    // While refreshing, the list makes room for the header above its first row.
    Binding {
        target: root.target
        property: "topMargin"
        value: root.refreshing ? root.height : 0
        when: root.target !== null
    }
    onRefreshingChanged: {
        if (!target)
            return
        if (refreshing && !target.dragging && target.contentY <= target.originY)
            target.contentY = target.originY - height
        else if (!refreshing)
            target.returnToBounds()
    }
}
