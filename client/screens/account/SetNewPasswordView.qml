import QtQuick
import QtQuick.Controls
import Tarvel

// A new password and its repeat, and "确定".
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
