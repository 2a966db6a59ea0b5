import QtQuick
import Tarvel

// Binding an e-mail address: the address, the current password, and "完成".
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
            label: "邮箱"
            field: view.controller ? view.controller.fieldEmail : null
            fieldName: "fieldEmail"
        }
        AccountFormSeparator {}
        AccountFormField {
            width: parent.width
            label: "登录密码"
            field: view.controller ? view.controller.fieldPassword : null
            fieldName: "fieldPassword"
        }
        Text {
            x: Theme.spacingLarge
            width: parent.width - 2 * Theme.spacingLarge
            topPadding: Theme.spacingMedium
            bottomPadding: Theme.spacingXLarge
            text: "绑定后，可以用这个邮箱登录和找回密码。"
            color: Theme.textSecondary
            font.pixelSize: Theme.fontFootnote
            wrapMode: Text.Wrap
        }
        AccountFormButton {
            objectName: "buttonNext"
            state: view.controller ? view.controller.buttonNext : null
        }
    }
}
