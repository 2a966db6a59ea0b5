import QtQuick
import QtQuick.Controls
import Tarvel

// Recovery by mobile number or by e-mail: the account, the captcha with its picture, and the
// button that goes on.
Item {
    id: view
    property var controller: null
    readonly property bool laidOut: controller !== null && controller.backgroundImage.length > 0

    AccountBackground {
        anchors.fill: parent
        imageName: view.controller ? view.controller.backgroundImage : ""
    }
    MouseArea {
        anchors.fill: parent
        onClicked: {
            if (view.controller && view.controller.shouldReceiveEndEditingTap(false, false))
                view.controller.setEndEdingAction()
        }
    }
    Connections {
        target: view.controller
        function onEndEditingRequested() { view.forceActiveFocus() }
    }

    Column {
        visible: view.laidOut
        anchors.horizontalCenter: parent.horizontalCenter
        y: Theme.spacingXLarge
        width: parent.width - 2 * 30

        AccountField {
            width: parent.width
            fieldObjectName: "fieldUser"
            state: view.controller ? view.controller.fieldUser : null
        }
        AccountField {
            width: parent.width
            fieldObjectName: "fieldAuthCode"
            state: view.controller ? view.controller.fieldAuthCode : null
            trailingWidth: 96
            CaptchaButton {
                objectName: "imageCode"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                width: 96
                captcha: view.controller ? view.controller.imageCode : null
            }
        }

        Item { width: 1; height: 36 }

        AccountButton {
            objectName: "buttonNext"
            width: parent.width
            state: view.controller ? view.controller.buttonNext : null
        }
    }
}
