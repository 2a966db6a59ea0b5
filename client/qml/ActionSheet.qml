import QtQuick
import Tarvel

// The current action sheet of the alert centre, sliding up from the bottom: an optional title,
// the buttons (destructive in red), and cancel set apart below. Tapping outside cancels.
Item {
    id: sheet
    readonly property bool shown: AlertCenter.active && AlertCenter.style === AlertCenter.ActionSheet
    readonly property var choices: AlertCenter.buttons.filter(b => b.role !== AlertCenter.Cancel)
    readonly property var cancelButton: {
        const found = AlertCenter.buttons.filter(b => b.role === AlertCenter.Cancel)
        return found.length > 0 ? found[0] : null
    }

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
        onClicked: if (sheet.cancelButton) AlertCenter.choose(sheet.cancelButton.index)
    }

    Column {
        id: panel
        objectName: "actionSheetPanel"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: 8
        y: sheet.shown ? sheet.height - height - 8 : sheet.height
        spacing: 8
        Behavior on y {
            NumberAnimation { duration: 250; easing.type: Easing.OutCubic }
        }

        Rectangle {
            width: parent.width
            height: group.height
            radius: 12
            color: Theme.sheetBackground
            clip: true

            Column {
                id: group
                width: parent.width

                Text {
                    width: parent.width
                    visible: text.length > 0
                    topPadding: 14
                    bottomPadding: 14
                    leftPadding: 16
                    rightPadding: 16
                    text: AlertCenter.title
                    color: Theme.textSecondary
                    font.pixelSize: Theme.fontSubhead
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                }
                Repeater {
                    model: sheet.choices
                    delegate: SheetButton {
                        required property var modelData
                        required property int index
                        width: group.width
                        choice: modelData
                        separatorShown: index > 0 || AlertCenter.title.length > 0
                    }
                }
            }
        }

        Rectangle {
            width: parent.width
            height: 57
            radius: 12
            color: Theme.sheetBackground
            clip: true
            visible: sheet.cancelButton !== null
            SheetButton {
                width: parent.width
                choice: sheet.cancelButton
                separatorShown: false
            }
        }
    }

    component SheetButton: Item {
        id: button
        property var choice: null
        property bool separatorShown: true
        height: 57

        Rectangle {
            anchors.fill: parent
            color: touch.pressed ? Theme.sheetButtonPressed : "transparent"
        }
        Rectangle {
            visible: button.separatorShown
            width: parent.width
            height: 1
            color: Theme.separator
        }
        Text {
            anchors.fill: parent
            anchors.leftMargin: 12
            anchors.rightMargin: 12
            text: button.choice ? button.choice.title : ""
            color: button.choice && button.choice.role === AlertCenter.Destructive ? Theme.destructive : Theme.link
            font.pixelSize: Theme.fontTitle1
            font.weight: button.choice && button.choice.role === AlertCenter.Cancel ? Font.DemiBold : Font.Normal
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        MouseArea {
            id: touch
            anchors.fill: parent
            onClicked: if (button.choice) AlertCenter.choose(button.choice.index)
        }
    }
}
