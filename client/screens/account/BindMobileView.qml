import QtQuick
import Tarvel

// Binding a number: the number, its SMS code with the button, the current password, and "完成".
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
            label: "手机号"
            field: view.controller ? view.controller.fieldMobile : null
            fieldName: "fieldMobile"
        }
        AccountFormSeparator {}
        AccountFormField {
            width: parent.width
            label: "验证码"
            field: view.controller ? view.controller.fieldAuthCode : null
            button: view.controller ? view.controller.buttonAuthCode : null
            fieldName: "fieldAuthCode"
            buttonName: "buttonAuthCode"
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
            text: "绑定后，可以用这个手机号登录。"
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
