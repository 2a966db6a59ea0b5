import QtQuick
import Tarvel

// The personal-data page: the background band with the round avatar and "编辑头像", and the form
// below it.
Rectangle {
    id: view
    property var controller: null

    color: Theme.background

    Item {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        height: 200

        Rectangle {
            anchors.fill: parent
            color: Theme.navigationBar
        }
        Image {
            anchors.fill: parent
            source: view.controller ? Assets.imageUrl(view.controller.backgroundImage) : ""
            sourceSize: Qt.size(750, 400)
            fillMode: Image.PreserveAspectCrop
            visible: source.toString().length > 0
        }

        Rectangle {
            id: head
            objectName: "imageHead"
            anchors.horizontalCenter: parent.horizontalCenter
            y: 32
            width: 92
            height: 92
            radius: width / 2
            color: Theme.navigationBarDark
            border.color: Theme.textOnDark
            border.width: 3
            readonly property bool ready: picture.ready

            RoundHeadImage {
                id: picture
                objectName: "imageHeadPicture"
                anchors.fill: parent
                anchors.margins: 3
                source: view.controller ? view.controller.imageHead : ""
            }
        }

        BoundButton {
            objectName: "buttonEditHead"
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.top: head.bottom
            anchors.topMargin: Theme.spacingRegular
            width: 104
            height: 30
            state: view.controller ? view.controller.buttonEditHead : null
            background: Rectangle {
                radius: height / 2
                color: "transparent"
                border.color: Theme.textOnDark
                border.width: 1
            }
        }
    }

    PersonalDataBottomView {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.topMargin: Theme.spacingRegular
        form: view.controller ? view.controller.bottomView : null
    }
}
