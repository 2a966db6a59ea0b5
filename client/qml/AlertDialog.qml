import QtQuick
import Tarvel

// The current alert of the alert centre: title, message and buttons in a centred box over a dim
// mask. Two buttons sit side by side, more stack up; cancel is bold, destructive red.
Item {
    id: dialog
    readonly property bool shown: AlertCenter.active && AlertCenter.style === AlertCenter.Alert
    readonly property bool sideBySide: AlertCenter.buttons.length === 2

    visible: shown

    Rectangle {
        anchors.fill: parent
        color: Theme.mask
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        id: box
        anchors.centerIn: parent
        width: 270
        height: texts.height + buttons.height
        radius: 12
        color: Theme.sheetBackground
        clip: true

        Column {
            id: texts
            width: parent.width
            topPadding: 20
            bottomPadding: 20
            spacing: 6

            Text {
                x: 16
                width: parent.width - 32
                visible: text.length > 0
                text: AlertCenter.title
                color: Theme.textPrimary
                font.pixelSize: Theme.fontTitle3
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
            Text {
                x: 16
                width: parent.width - 32
                visible: text.length > 0
                text: AlertCenter.message
                color: Theme.textPrimary
                font.pixelSize: Theme.fontSubhead
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
        }

        Grid {
            id: buttons
            anchors.top: texts.bottom
            width: parent.width
            columns: dialog.sideBySide ? 2 : 1

            Repeater {
                model: AlertCenter.buttons
                delegate: Item {
                    required property var modelData
                    required property int index
                    width: dialog.sideBySide ? box.width / 2 : box.width
                    height: 44

                    Rectangle {
                        anchors.fill: parent
                        color: touch.pressed ? Theme.sheetButtonPressed : "transparent"
                    }
                    Rectangle {
                        width: parent.width
                        height: 1
                        color: Theme.separator
                    }
                    Rectangle {
                        visible: dialog.sideBySide && index === 1
                        width: 1
                        height: parent.height
                        color: Theme.separator
                    }
                    Text {
                        anchors.fill: parent
                        anchors.leftMargin: 8
                        anchors.rightMargin: 8
                        text: modelData.title
                        color: modelData.role === AlertCenter.Destructive ? Theme.destructive : Theme.link
                        font.pixelSize: Theme.fontTitle3
                        font.weight: modelData.role === AlertCenter.Cancel ? Font.DemiBold : Font.Normal
                        elide: Text.ElideRight
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                    }
                    MouseArea {
                        id: touch
                        anchors.fill: parent
                        onClicked: AlertCenter.choose(modelData.index)
                    }
                }
            }
        }
    }
}
