import QtQuick
import Tarvel

// "偏好设置": the push switch in a card, with a line saying what it does.
Rectangle {
    id: view
    property PreferencesViewController controller: null

    color: Theme.listBackground

    Column {
        y: Theme.spacingRegular
        width: parent.width
        spacing: Theme.spacingMedium

        Rectangle {
            width: parent.width
            height: Theme.rowHeight + Theme.spacingRegular
            color: Theme.cardBackground

            Text {
                anchors.left: parent.left
                anchors.leftMargin: Theme.spacingLarge
                anchors.right: pushSwitch.left
                anchors.rightMargin: Theme.spacingMedium
                anchors.verticalCenter: parent.verticalCenter
                text: "接收推送消息"
                elide: Text.ElideRight
                color: Theme.textPrimary
                font.family: Theme.fontFamily
                font.pixelSize: Theme.fontHeadline
            }
            BoundSwitch {
                id: pushSwitch
                objectName: "switchPush"
                anchors.right: parent.right
                anchors.rightMargin: Theme.spacingLarge
                anchors.verticalCenter: parent.verticalCenter
                state: view.controller ? view.controller.switchPush : null
                onColor: Theme.success
            }
        }
        Text {
            x: Theme.spacingLarge
            width: parent.width - 2 * Theme.spacingLarge
            text: "开启后可及时收到优惠活动、订单状态等消息。系统设置中关闭了 Tarvel 的通知时，此开关显示为关闭。"
            wrapMode: Text.Wrap
            lineHeight: 1.2
            color: Theme.textSecondary
            font.family: Theme.fontFamily
            font.pixelSize: Theme.fontFootnote
        }
    }
}
