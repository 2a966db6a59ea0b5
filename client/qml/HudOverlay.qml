import QtQuick
import Tarvel

// The HUD: a dark rounded box with a spinning ring, a tick or a cross and the text, over a dim
// mask that swallows every touch while the HUD is masked.
Item {
    id: overlay
    readonly property bool shown: Hud.visible

    visible: opacity > 0
    opacity: shown ? 1 : 0
    Behavior on opacity {
        NumberAnimation { duration: 150 }
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.mask
        visible: Hud.masked
    }
    MouseArea {
        anchors.fill: parent
        enabled: overlay.shown && Hud.masked
        hoverEnabled: enabled
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        id: box
        anchors.centerIn: parent
        // As wide as the text asks for (before wrapping), within sensible bounds.
        width: Math.max(110, Math.min(overlay.width * 0.76, metrics.advanceWidth + 44))
        height: content.implicitHeight + 36
        radius: 10
        color: Theme.hudBackground

        Column {
            id: content
            anchors.centerIn: parent
            width: box.width - 32
            spacing: 12

            Image {
                id: symbol
                anchors.horizontalCenter: parent.horizontalCenter
                width: 40
                height: 40
                sourceSize: Qt.size(80, 80)
                source: Hud.kind === Hud.Success ? "icons/hudSuccess.svg"
                      : Hud.kind === Hud.Error ? "icons/hudError.svg" : "icons/hudProgress.svg"

                RotationAnimator on rotation {
                    from: 0
                    to: 360
                    duration: 900
                    loops: Animation.Infinite
                    running: overlay.visible && Hud.kind === Hud.Progress
                }
                onSourceChanged: rotation = 0
            }
            Text {
                width: parent.width
                visible: text.length > 0
                text: Hud.text
                color: Theme.textOnDark
                font.pixelSize: Theme.fontBody
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
        }
        TextMetrics {
            id: metrics
            font.pixelSize: Theme.fontBody
            text: Hud.text
        }
    }
}
