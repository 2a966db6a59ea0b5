import QtQuick
import Tarvel

// One coupon card as laid out: the ticket on the left, what a coupon does on the right.
Item {
    id: cell
    signal clicked()

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: Theme.spacingRegular
        anchors.rightMargin: Theme.spacingRegular
        anchors.topMargin: Theme.spacingSmall
        anchors.bottomMargin: Theme.spacingSmall
        radius: Theme.radiusMedium
        color: touch.pressed ? Theme.rowPressed : Theme.cardBackground
        clip: true

        Rectangle {
            id: ticket
            anchors.left: parent.left
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            width: 84
            radius: Theme.radiusMedium
            color: Theme.accent
            Image {
                anchors.centerIn: parent
                width: 40
                height: 40
                sourceSize: Qt.size(80, 80)
                source: Assets.imageUrl("myCoupon_ticket")
            }
        }
        Column {
            anchors.left: ticket.right
            anchors.leftMargin: Theme.spacingRegular
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacingRegular
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.spacingSmall
            Text {
                width: parent.width
                text: "满减优惠券"
                color: Theme.textPrimary
                font.pixelSize: Theme.fontBody
                font.weight: Font.DemiBold
                elide: Text.ElideRight
            }
            Text {
                width: parent.width
                text: "全场游戏通用，结算时输入优惠码"
                color: Theme.textSecondary
                font.pixelSize: Theme.fontFootnote
                elide: Text.ElideRight
            }
        }
        MouseArea {
            id: touch
            anchors.fill: parent
            onClicked: cell.clicked()
        }
    }
}
