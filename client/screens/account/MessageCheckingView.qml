import QtQuick
import QtQuick.Controls
import Tarvel

// The SMS step: where the code went, the code with "获取验证码", in find-password mode the new
// password and its repeat, and "完成" right under the last row shown.
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

        BoundLabel {
            objectName: "labelTitle"
            width: parent.width
            state: view.controller ? view.controller.labelTitle : null
            font.pixelSize: Theme.fontCallout
            wrapMode: Text.Wrap
            bottomPadding: Theme.spacingMedium
        }
        AccountField {
            width: parent.width
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
