import QtQuick
import QtQuick.Controls
import Tarvel

// One row of the account forms: a field in white on the background picture with a line under it,
// and room on its right for a button (the captcha picture, "获取验证码").
Item {
    id: row
    property TextFieldState state: null
    property alias fieldObjectName: input.objectName
    property real trailingWidth: 0
    default property alias trailing: trailingArea.data

    implicitHeight: 48
    visible: state !== null && !state.hidden

    BoundTextField {
        id: input
        anchors.left: parent.left
        anchors.right: trailingArea.left
        anchors.rightMargin: row.trailingWidth > 0 ? Theme.spacingMedium : 0
        anchors.verticalCenter: parent.verticalCenter
        height: 44
        state: row.state
        color: Theme.textOnDark
        placeholderTextColor: Theme.textOnDarkSecondary
        selectionColor: Theme.textOnDarkSelection
        font.pixelSize: Theme.fontBody
        background: Item {}
    }
    Item {
        id: trailingArea
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: line.top
        width: row.trailingWidth
    }
    Rectangle {
        id: line
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: Theme.hairlineWidth
        color: Theme.lineOnDark
    }
}
