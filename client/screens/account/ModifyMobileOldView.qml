import QtQuick
import Tarvel

// The first step of a change of number: where the code goes, the code with its button, the
// current password, and "下一步".
Rectangle {
    id: view
    property var controller: null

    color: Theme.background

    Column {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: 0

        BoundLabel {
            objectName: "labelTip"
            x: Theme.spacingLarge
            width: parent.width - 2 * Theme.spacingLarge
            topPadding: Theme.spacingLarge
            bottomPadding: Theme.spacingMedium
            state: view.controller ? view.controller.labelTip : null
            color: Theme.textSecondary
            font.pixelSize: Theme.fontSubhead
            wrapMode: Text.Wrap
        }
        AccountFormField {
            width: parent.width
            label: "验证码"
            field: view.controller ? view.controller.fieldNewPsw : null
            button: view.controller ? view.controller.buttonAuthCode : null
            fieldName: "fieldNewPsw"
            buttonName: "buttonAuthCode"
        }
        AccountFormSeparator {}
        AccountFormField {
            width: parent.width
            label: "登录密码"
            field: view.controller ? view.controller.fieldPassword : null
            fieldName: "fieldPassword"
        }
        Item { width: 1; height: Theme.spacingXLarge + Theme.spacingMedium }
        AccountFormButton {
            objectName: "buttonNext"
            state: view.controller ? view.controller.buttonNext : null
        }
    }
}
