import QtQuick
import QtQuick.Controls
import Tarvel

// The sign-in page: the background picture reaching under the see-through bar, the round header
// picture, the account and password fields with their icons and separator lines, the sign-in
// button and, under it, the links to password recovery and registration.
Item {
    id: view
    property var controller: null
    readonly property bool laidOut: controller !== null && controller.imageHead.length > 0

    // The same blue as the bar until the background picture is there.
    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop { position: 0; color: Theme.navigationBar }
            GradientStop { position: 1; color: Theme.navigationBarDeep }
        }
    }
    Image {
        anchors.fill: parent
        source: view.controller ? Assets.imageUrl(view.controller.backgroundImage) : ""
        fillMode: Image.PreserveAspectCrop
        visible: source.toString().length > 0
    }

    // A tap outside the fields puts the keyboard away.
    MouseArea {
        anchors.fill: parent
        onClicked: {
            if (view.controller)
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
        y: Theme.navigationBarHeight + 36
        width: parent.width - 60
        spacing: 0

        Rectangle {
            objectName: "imageHead"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 88
            height: 88
            radius: width / 2
            color: "transparent"
            border.color: Theme.textOnDark
            border.width: 2
            Image {
                anchors.fill: parent
                anchors.margins: 2
                source: view.controller ? Assets.imageUrl(view.controller.imageHead) : ""
                sourceSize: Qt.size(168, 168)
                fillMode: Image.PreserveAspectFit
            }
        }

        Item { width: 1; height: 40 }

        BoundTextField {
            objectName: "fieldUser"
            width: parent.width
            height: 48
            state: view.controller ? view.controller.fieldUser : null
            color: Theme.textOnDark
            placeholderTextColor: Theme.textOnDarkSecondary
            selectionColor: Theme.textOnDarkSelection
            background: Item {}
        }
        Rectangle { width: parent.width; height: 1; color: Theme.lineOnDark }

        BoundTextField {
            objectName: "fieldPassword"
            width: parent.width
            height: 48
            state: view.controller ? view.controller.fieldPassword : null
            color: Theme.textOnDark
            placeholderTextColor: Theme.textOnDarkSecondary
            selectionColor: Theme.textOnDarkSelection
            background: Item {}
        }
        Rectangle { width: parent.width; height: 1; color: Theme.lineOnDark }

        Item { width: 1; height: 36 }

        BoundButton {
            objectName: "buttonLogin"
            width: parent.width
            height: 44
            state: view.controller ? view.controller.buttonLogin : null
            background: Rectangle {
                radius: 22
                color: Theme.accent
            }
        }

        Item { width: 1; height: 8 }

        Item {
            width: parent.width
            height: 36
            BoundButton {
                objectName: "buttonForget"
                anchors.left: parent.left
                anchors.leftMargin: -12
                height: parent.height
                state: view.controller ? view.controller.buttonForget : null
                background: Item {}
            }
            BoundButton {
                objectName: "buttonRegister"
                anchors.right: parent.right
                anchors.rightMargin: -12
                height: parent.height
                state: view.controller ? view.controller.buttonRegister : null
                background: Item {}
            }
        }
    }
}
