import QtQuick
import Tarvel

// WeChat's payment page as the sandbox plays it: a sheet over the app with the merchant, the
// amount and the payer's two choices; the cross leaves without answering.
Item {
    id: sheet
    objectName: "weChatPaySheet"
    readonly property bool shown: WeChatPayPrompt.shown

    // 0 hidden below the window, 1 fully up; only a change of `shown` slides it.
    property real progress: shown ? 1 : 0
    Behavior on progress {
        NumberAnimation { duration: 250; easing.type: Easing.OutCubic }
    }

    visible: progress > 0

    Rectangle {
        anchors.fill: parent
        color: Theme.mask
        opacity: sheet.progress
    }
    // Nothing of the app below takes touches while WeChat is in front.
    MouseArea {
        anchors.fill: parent
        enabled: sheet.shown
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        id: panel
        objectName: "weChatPayPanel"
        width: sheet.width
        // The rounded corners show at the top only: the bottom ones sit below the window.
        height: content.height + radius + 8
        y: sheet.height - sheet.progress * (height - radius)
        radius: 14
        color: Theme.cardBackground

        Column {
            id: content
            width: parent.width

            Item {
                width: parent.width
                height: 54

                Item {
                    id: close
                    objectName: "weChatPayClose"
                    width: 54
                    height: 54
                    Repeater {
                        model: [45, -45]
                        delegate: Rectangle {
                            required property int modelData
                            anchors.centerIn: parent
                            width: 20
                            height: 2
                            radius: 1
                            color: Theme.textPrimary
                            rotation: modelData
                        }
                    }
                    MouseArea {
                        anchors.fill: parent
                        onClicked: WeChatPayPrompt.dismiss()
                    }
                }
                Row {
                    anchors.centerIn: parent
                    spacing: 8
                    Image {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 22
                        height: 22
                        sourceSize: Qt.size(44, 44)
                        source: "icons/wechatPayLogo.svg"
                    }
                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        text: WeChatPayPrompt.title
                        color: Theme.textPrimary
                        font.pixelSize: Theme.fontTitle3
                        font.weight: Font.DemiBold
                    }
                }
                Rectangle {
                    anchors.bottom: parent.bottom
                    width: parent.width
                    height: 1
                    color: Theme.separator
                }
            }

            Text {
                width: parent.width
                topPadding: 28
                text: WeChatPayPrompt.merchant
                color: Theme.textSecondary
                font.pixelSize: Theme.fontBody
                horizontalAlignment: Text.AlignHCenter
            }
            Text {
                width: parent.width
                topPadding: 10
                text: WeChatPayPrompt.amount.length > 0 ? WeChatPayPrompt.amount : "¥ --"
                color: Theme.textPrimary
                font.pixelSize: Theme.fontDisplay
                font.weight: Font.DemiBold
                horizontalAlignment: Text.AlignHCenter
            }
            Text {
                width: parent.width
                height: 32
                leftPadding: 16
                rightPadding: 16
                text: WeChatPayPrompt.status
                color: WeChatPayPrompt.busy ? Theme.textSecondary : Theme.destructive
                font.pixelSize: Theme.fontSubhead
                elide: Text.ElideRight
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }

            Column {
                x: 16
                width: parent.width - 32
                DetailRow { label: "订单编号"; value: WeChatPayPrompt.orderNumber.length > 0 ? WeChatPayPrompt.orderNumber : "--" }
                DetailRow { label: "付款方式"; value: "零钱"; last: true }
            }

            Item { width: 1; height: 24 }

            Rectangle {
                objectName: "weChatPayConfirm"
                x: 16
                width: parent.width - 32
                height: 46
                radius: 8
                color: confirmTouch.pressed ? Qt.darker(Theme.weChatGreen, 1.1) : Theme.weChatGreen
                opacity: WeChatPayPrompt.canConfirm ? 1 : 0.45
                Text {
                    anchors.centerIn: parent
                    text: "确认支付"
                    color: Theme.textOnDark
                    font.pixelSize: Theme.fontTitle3
                    font.weight: Font.DemiBold
                }
                MouseArea {
                    id: confirmTouch
                    anchors.fill: parent
                    enabled: WeChatPayPrompt.canConfirm
                    onClicked: WeChatPayPrompt.confirm()
                }
            }
            Item {
                objectName: "weChatPayCancel"
                width: parent.width
                height: 52
                Text {
                    anchors.centerIn: parent
                    text: "取消支付"
                    color: cancelTouch.pressed ? Theme.textPrimary : Theme.textSecondary
                    font.pixelSize: Theme.fontBody
                }
                MouseArea {
                    id: cancelTouch
                    anchors.fill: parent
                    onClicked: WeChatPayPrompt.cancel()
                }
            }
        }
    }

    component DetailRow: Item {
        property string label
        property string value
        property bool last: false
        width: parent ? parent.width : 0
        height: 44
        Rectangle {
            width: parent.width
            height: 1
            color: Theme.separator
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: parent.label
            color: Theme.textSecondary
            font.pixelSize: Theme.fontBody
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            anchors.right: parent.right
            text: parent.value
            color: Theme.textPrimary
            font.pixelSize: Theme.fontBody
        }
        Rectangle {
            visible: parent.last
            anchors.bottom: parent.bottom
            width: parent.width
            height: 1
            color: Theme.separator
        }
    }
}
