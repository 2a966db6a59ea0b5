import QtQuick
import QtQuick.Controls
import Tarvel

// One message: its title, date and content on a card. Tapping the page follows the message's
// address when it has one.
Item {
    id: view
    property var controller: null

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }
    Flickable {
        id: flick
        anchors.fill: parent
        contentHeight: Math.max(height, card.height + 24)
        clip: true

        // The page's background takes the tap, card included.
        MouseArea {
            objectName: "background"
            width: flick.width
            height: flick.contentHeight
            onClicked: if (view.controller) view.controller.clickButtonBg()
        }

        Rectangle {
            id: card
            x: 12
            y: 12
            width: parent.width - 24
            height: content.height + 32
            radius: 6
            color: Theme.cardBackground

            Column {
                id: content
                x: 16
                y: 16
                width: parent.width - 32
                spacing: 10

                Text {
                    width: parent.width
                    text: view.controller ? view.controller.messageTitle : ""
                    color: Theme.textPrimary
                    font.pixelSize: Theme.fontTitle3
                    font.weight: Font.Medium
                    wrapMode: Text.Wrap
                }
                Text {
                    text: view.controller ? view.controller.messageDate : ""
                    color: Theme.textSecondary
                    font.pixelSize: Theme.fontFootnote
                }
                Rectangle { width: parent.width; height: 1; color: Theme.separator }
                Text {
                    width: parent.width
                    text: view.controller ? view.controller.messageContent : ""
                    color: Theme.textPrimary
                    font.pixelSize: Theme.fontBody
                    lineHeight: 1.3
                    wrapMode: Text.Wrap
                }
                Text {
                    visible: view.controller !== null && view.controller.hasLink
                    text: "点击查看详情 ›"
                    color: Theme.link
                    font.pixelSize: Theme.fontCallout
                }
            }
        }
    }
}
