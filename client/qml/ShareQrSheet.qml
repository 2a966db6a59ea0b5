import QtQuick
import Tarvel

// Sharing to WeChat on a desktop: the page as a QR code to scan with WeChat, in a card over the
// app; "完成" once shared, "取消" to give up.
Item {
    id: sheet
    objectName: "shareQrSheet"
    readonly property bool shown: ShareQrPrompt.shown

    visible: opacity > 0
    opacity: shown ? 1 : 0
    Behavior on opacity {
        NumberAnimation { duration: 180 }
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.mask
    }
    MouseArea {
        anchors.fill: parent
        enabled: sheet.shown
        hoverEnabled: enabled
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        id: card
        objectName: "shareQrCard"
        anchors.centerIn: parent
        width: 300
        height: body.height + buttons.height
        radius: 12
        color: Theme.cardBackground
        clip: true

        Column {
            id: body
            width: parent.width
            topPadding: 20
            bottomPadding: 18
            spacing: 10

            Text {
                width: parent.width
                text: ShareQrPrompt.title
                color: Theme.textPrimary
                font.pixelSize: Theme.fontTitle3
                font.weight: Font.DemiBold
                horizontalAlignment: Text.AlignHCenter
            }
            Text {
                x: 20
                width: parent.width - 40
                visible: text.length > 0
                text: ShareQrPrompt.shareTitle
                color: Theme.textPrimary
                font.pixelSize: Theme.fontCallout
                maximumLineCount: 2
                wrapMode: Text.Wrap
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignHCenter
            }
            Text {
                x: 20
                width: parent.width - 40
                visible: text.length > 0
                text: ShareQrPrompt.shareText
                color: Theme.textSecondary
                font.pixelSize: Theme.fontFootnote
                maximumLineCount: 2
                wrapMode: Text.Wrap
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignHCenter
            }
            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 188
                height: 188
                radius: 6
                color: Theme.cardBackground
                border.color: Theme.separator
                QrCodeImage {
                    objectName: "shareQrCode"
                    anchors.fill: parent
                    anchors.margins: 10
                    text: ShareQrPrompt.code
                }
            }
            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 6
                Image {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 18
                    height: 18
                    sourceSize: Qt.size(36, 36)
                    source: "icons/wechatPayLogo.svg"
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: ShareQrPrompt.hint
                    color: Theme.textPrimary
                    font.pixelSize: Theme.fontBody
                }
            }
            Text {
                x: 20
                width: parent.width - 40
                text: ShareQrPrompt.detail
                color: Theme.textSecondary
                font.pixelSize: Theme.fontFootnote
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }
        }

        Row {
            id: buttons
            anchors.top: body.bottom
            width: parent.width
            height: 46

            Repeater {
                model: [{ title: "取消", done: false }, { title: "完成", done: true }]
                delegate: Item {
                    required property var modelData
                    required property int index
                    width: card.width / 2
                    height: buttons.height
                    Rectangle {
                        anchors.fill: parent
                        color: touch.pressed ? Theme.sheetButtonPressed : "transparent"
                    }
                    Rectangle {
                        width: parent.width
                        height: 1
                        color: Theme.separator
                    }
                    Rectangle {
                        visible: index === 1
                        width: 1
                        height: parent.height
                        color: Theme.separator
                    }
                    Text {
                        anchors.centerIn: parent
                        text: modelData.title
                        color: modelData.done ? Theme.weChatGreen : Theme.textSecondary
                        font.pixelSize: Theme.fontTitle3
                        font.weight: modelData.done ? Font.DemiBold : Font.Normal
                    }
                    MouseArea {
                        id: touch
                        anchors.fill: parent
                        onClicked: modelData.done ? ShareQrPrompt.done() : ShareQrPrompt.cancel()
                    }
                }
            }
        }
    }
}
