import QtQuick
import QtQuick.Controls
import Tarvel

// The news page: what the page is and where it lives, with a way to open it in the browser. A
// page that could not be loaded leaves the screen blank.
Rectangle {
    id: view
    property NewsDetailViewController controller: null
    readonly property bool loaded: controller !== null
                                   && controller.loadState === NewsDetailViewController.Loaded

    color: "white"

    Column {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 20
        anchors.topMargin: 40
        spacing: 14
        visible: view.loaded

        Text {
            width: parent.width
            text: view.controller && view.controller.pageTitle.length > 0
                  ? view.controller.pageTitle : "资讯详情"
            color: Theme.textPrimary
            font.pixelSize: 20
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        Text {
            width: parent.width
            text: view.controller ? view.controller.pageAddress.toString() : ""
            color: Theme.textSecondary
            font.pixelSize: 13
            wrapMode: Text.WrapAnywhere
            horizontalAlignment: Text.AlignHCenter
        }
        Item {
            width: parent.width
            height: 10
        }
        Button {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 200
            height: 42
            text: "在浏览器中打开"
            font.pixelSize: 15
            contentItem: Text {
                text: parent.text
                font: parent.font
                color: "white"
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }
            background: Rectangle {
                radius: 21
                color: parent.pressed ? Qt.darker(Theme.navigationBar, 1.2) : Theme.navigationBar
            }
            onClicked: view.controller.openInBrowser()
        }
    }

    ICShareSheet {
        shareView: view.controller ? view.controller.shareView : null
    }
}
