import QtQuick
import Tarvel

// "关于Tarvel游戏": the app's picture, name and version, and the two links into the company's site.
Rectangle {
    id: view
    property AboutViewController controller: null

    color: Theme.listBackground

    Column {
        id: head
        y: Theme.spacingXLarge * 2
        width: parent.width
        spacing: Theme.spacingMedium

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 84
            height: 84
            sourceSize: Qt.size(168, 168)
            source: Assets.imageUrl("about_logo")
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Tarvel游戏"
            color: Theme.textPrimary
            font.family: Theme.fontFamily
            font.pixelSize: Theme.fontTitle2
            font.weight: Font.DemiBold
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: view.controller ? view.controller.versionText : ""
            color: Theme.textSecondary
            font.family: Theme.fontFamily
            font.pixelSize: Theme.fontSubhead
        }
    }

    Column {
        anchors.top: head.bottom
        anchors.topMargin: Theme.spacingXLarge * 2
        width: parent.width

        Repeater {
            model: view.controller ? [view.controller.buttonTarvel, view.controller.buttonQMRT] : []
            delegate: Rectangle {
                id: link
                required property var modelData
                required property int index
                objectName: "aboutLink" + index
                width: view.width
                height: Theme.rowHeight + Theme.spacingMedium
                color: touch.pressed ? Theme.rowPressed : Theme.cardBackground

                Text {
                    anchors.left: parent.left
                    anchors.leftMargin: Theme.spacingLarge
                    anchors.verticalCenter: parent.verticalCenter
                    text: link.modelData.title
                    color: Theme.textPrimary
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.fontBody
                }
                Image {
                    anchors.right: parent.right
                    anchors.rightMargin: Theme.spacingMedium
                    anchors.verticalCenter: parent.verticalCenter
                    width: 18
                    height: 18
                    sourceSize: Qt.size(36, 36)
                    source: Assets.imageUrl("goodsDetail_arrow")
                }
                Rectangle {
                    visible: link.index === 0
                    anchors.left: parent.left
                    anchors.leftMargin: Theme.spacingLarge
                    anchors.right: parent.right
                    anchors.bottom: parent.bottom
                    height: Theme.hairlineWidth
                    color: Theme.hairline
                }
                MouseArea {
                    id: touch
                    anchors.fill: parent
                    onClicked: link.modelData.tap()
                }
            }
        }
    }

    Text {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.spacingXLarge
        anchors.horizontalCenter: parent.horizontalCenter
        text: "© QMRT 版权所有"
        color: Theme.textTertiary
        font.family: Theme.fontFamily
        font.pixelSize: Theme.fontFootnote
    }
}
