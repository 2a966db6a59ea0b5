import QtQuick
import Tarvel

// The category screen: the store's lists, one row each.
Item {
    id: view
    property TabTwoViewController controller: null

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    ListView {
        id: list
        anchors.fill: parent
        anchors.topMargin: 10
        clip: true
        model: view.controller ? view.controller.categories : null
        delegate: Rectangle {
            id: rowItem
            required property int index
            required property string name
            required property string detail
            width: list.width
            height: 64
            color: touch.pressed ? Theme.sheetButtonPressed : Theme.cardBackground

            Rectangle {
                id: badge
                anchors.left: parent.left
                anchors.leftMargin: 14
                anchors.verticalCenter: parent.verticalCenter
                width: 40
                height: 40
                radius: 8
                color: Theme.accent
                Text {
                    anchors.centerIn: parent
                    text: rowItem.name.charAt(0)
                    color: Theme.textOnDark
                    font.pixelSize: Theme.fontTitle2
                    font.weight: Font.DemiBold
                }
            }
            Column {
                anchors.left: badge.right
                anchors.leftMargin: 12
                anchors.right: parent.right
                anchors.rightMargin: 30
                anchors.verticalCenter: parent.verticalCenter
                spacing: 4
                Text {
                    text: rowItem.name
                    color: Theme.textPrimary
                    font.pixelSize: Theme.fontHeadline
                }
                Text {
                    width: parent.width
                    text: rowItem.detail
                    color: Theme.textSecondary
                    font.pixelSize: Theme.fontFootnote
                    elide: Text.ElideRight
                }
            }
            Text {
                anchors.right: parent.right
                anchors.rightMargin: 12
                anchors.verticalCenter: parent.verticalCenter
                text: "›"
                color: Theme.textPlaceholder
                font.pixelSize: Theme.fontLargeTitle
            }
            Rectangle {
                anchors.bottom: parent.bottom
                anchors.left: badge.left
                anchors.right: parent.right
                height: 1
                color: Theme.separator
            }
            MouseArea {
                id: touch
                anchors.fill: parent
                onClicked: view.controller.didSelectCategoryAtIndex(rowItem.index)
            }
        }
    }
}
