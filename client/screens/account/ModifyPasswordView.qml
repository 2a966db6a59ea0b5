import QtQuick
import Tarvel

// The change of password: the current password, the new one twice, a note, and "保存".
Rectangle {
    id: view
    property var controller: null

    color: Theme.background

    Column {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.topMargin: Theme.spacingRegular
        spacing: 0

        AccountFormField {
            width: parent.width
            label: "旧密码"
            field: view.controller ? view.controller.fieldOldPassword : null
            fieldName: "fieldOldPassword"
        }
        AccountFormSeparator {}
        AccountFormField {
            width: parent.width
            label: "新密码"
            field: view.controller ? view.controller.fieldNewPassword : null
            fieldName: "fieldNewPassword"
        }
        AccountFormSeparator {}
        AccountFormField {
            width: parent.width
            label: "确认密码"
            field: view.controller ? view.controller.fieldNewPasswordAgain : null
            fieldName: "fieldNewPasswordAgain"
        }
        Text {
            x: Theme.spacingLarge
            width: parent.width - 2 * Theme.spacingLarge
            topPadding: Theme.spacingMedium
            bottomPadding: Theme.spacingXLarge
            text: "修改密码后，其他设备上的登录将会失效。"
            color: Theme.textSecondary
            font.pixelSize: Theme.fontFootnote
            wrapMode: Text.Wrap
        }
        AccountFormButton {
            objectName: "buttonSave"
            state: view.controller ? view.controller.buttonSave : null
        }
    }
}
