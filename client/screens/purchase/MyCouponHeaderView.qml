import QtQuick
import Tarvel

// Above the coupon cards: how coupons are used.
Rectangle {
    id: header
    height: 64
    color: Theme.background

    Rectangle {
        anchors.fill: parent
        anchors.margins: Theme.spacingRegular
        anchors.bottomMargin: Theme.spacingSmall
        radius: Theme.radiusMedium
        color: Theme.highlightBackground
        Text {
            anchors.fill: parent
            anchors.leftMargin: Theme.spacingRegular
            anchors.rightMargin: Theme.spacingRegular
            verticalAlignment: Text.AlignVCenter
            text: "在确认订单页输入优惠码即可抵扣，每个订单限用一张"
            color: Theme.accent
            font.pixelSize: Theme.fontSubhead
            elide: Text.ElideRight
        }
    }
}
