import QtQuick
import QtQuick.Controls
import Tarvel

// Registration: account, captcha with its picture, the SMS row (folds away for a mail address),
// password and its confirmation, and "完成", over the background picture that reaches under the
// see-through bar.
Item {
    id: view
    property var controller: null
    readonly property bool laidOut: controller !== null && controller.backgroundImage.length > 0

    AccountBackground {
        anchors.fill: parent
        imageName: view.controller ? view.controller.backgroundImage : ""
    }

    // A tap outside the fields puts the keyboard away.
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
        id: form
        visible: view.laidOut
        anchors.horizontalCenter: parent.horizontalCenter
        y: Theme.navigationBarHeight + Theme.spacingXLarge
        width: parent.width - 2 * 30

        AccountField {
            width: parent.width
            fieldObjectName: "fieldUser"
            state: view.controller ? view.controller.fieldUser : null
        }
        AccountField {
            width: parent.width
            fieldObjectName: "fieldImageCode"
            state: view.controller ? view.controller.fieldImageCode : null
            trailingWidth: 96
            CaptchaButton {
                objectName: "imageCode"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                width: 96
                captcha: view.controller ? view.controller.imageCode : null
            }
        }
        Item {
            id: smsRow
            objectName: "viewAuthCode"
            readonly property var row: view.controller ? view.controller.viewAuthCode : null
            width: parent.width
            height: row ? row.height : 0
            visible: row !== null && !row.hidden
            clip: true
            AccountField {
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.bottom: parent.bottom
                height: view.controller ? view.controller.viewAuthCode.fullHeight : 48
                fieldObjectName: "fieldAuthCode"
                state: view.controller ? view.controller.fieldAuthCode : null
                trailingWidth: 96
                AuthCodeButton {
                    objectName: "buttonAuthCode"
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    width: 96
                    state: view.controller ? view.controller.buttonAuthCode : null
                }
            }
        }
        AccountField {
            width: parent.width
            fieldObjectName: "fieldPassword"
            state: view.controller ? view.controller.fieldPassword : null
        }
        AccountField {
            width: parent.width
            fieldObjectName: "fieldPasswordAgain"
            state: view.controller ? view.controller.fieldPasswordAgain : null
        }

        Item { width: 1; height: 36 }

        AccountButton {
            objectName: "buttonNext"
            width: parent.width
            state: view.controller ? view.controller.buttonNext : null
        }
    }
}
