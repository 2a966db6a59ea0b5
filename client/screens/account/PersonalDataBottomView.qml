import QtQuick
import Tarvel

// The profile form: the nickname row, the gender row with its three buttons, and "保存".
Column {
    id: bottom
    property var form: null

    spacing: 0

    Rectangle {
        width: parent.width
        height: 52
        color: Theme.cardBackground
        Text {
            id: nameCaption
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            width: 56
            text: "昵称"
            color: Theme.textPrimary
            font.pixelSize: Theme.fontBody
        }
        BoundTextField {
            objectName: "fieldName"
            anchors.left: nameCaption.right
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacingMedium
            anchors.verticalCenter: parent.verticalCenter
            height: parent.height
            state: bottom.form ? bottom.form.fieldName : null
            background: Item {}
        }
    }
    AccountFormSeparator {}
    Rectangle {
        width: parent.width
        height: 60
        color: Theme.cardBackground
        Text {
            id: sexCaption
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            width: 56
            text: "性别"
            color: Theme.textPrimary
            font.pixelSize: Theme.fontBody
        }
        Row {
            anchors.left: sexCaption.right
            anchors.leftMargin: Theme.spacingMedium
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.spacingRegular
            Repeater {
                model: bottom.form ? [
                    { name: "buttonMale", button: bottom.form.buttonMale },
                    { name: "buttonWoman", button: bottom.form.buttonWoman },
                    { name: "buttonNone", button: bottom.form.buttonNone }
                ] : []
                delegate: BoundButton {
                    required property var modelData
                    objectName: modelData.name
                    width: 68
                    height: 34
                    state: modelData.button
                    background: Rectangle {
                        radius: Theme.radiusMedium
                        color: parent.state && parent.state.selected ? Theme.cardBackground
                                                                     : Theme.listBackground
                        border.width: Theme.hairlineWidth
                        border.color: parent.state && parent.state.selected ? Theme.accent
                                                                            : Theme.controlBorder
                    }
                }
            }
        }
    }
    Item { width: 1; height: Theme.spacingXLarge + Theme.spacingMedium }
    AccountFormButton {
        objectName: "buttonSave"
        state: bottom.form ? bottom.form.buttonSave : null
    }
}
