import QtQuick
import Tarvel

// One row of a security form: a short label, the field, and an optional button at the right
// (the "获取验证码" button of the SMS rows).
Rectangle {
    id: row
    property string label
    property var field: null
    property var button: null
    property string fieldName: ""
    property string buttonName: ""

    implicitHeight: 50
    color: Theme.cardBackground

    Text {
        id: caption
        anchors.left: parent.left
        anchors.leftMargin: Theme.spacingLarge
        anchors.verticalCenter: parent.verticalCenter
        width: 72
        text: row.label
        color: Theme.textPrimary
        font.pixelSize: Theme.fontBody
    }
    BoundTextField {
        objectName: row.fieldName
        anchors.left: caption.right
        anchors.right: sideButton.visible ? sideButton.left : parent.right
        anchors.rightMargin: Theme.spacingMedium
        anchors.verticalCenter: parent.verticalCenter
        height: parent.height
        state: row.field
        font.pixelSize: Theme.fontBody
        background: Item {}
    }
    BoundButton {
        id: sideButton
        objectName: row.buttonName
        anchors.right: parent.right
        anchors.rightMargin: Theme.spacingRegular
        anchors.verticalCenter: parent.verticalCenter
        width: 96
        height: 32
        visible: row.button !== null && !row.button.hidden
        state: row.button
        background: Rectangle {
            radius: Theme.radiusSmall
            color: Theme.navigationBar
        }
    }
}
