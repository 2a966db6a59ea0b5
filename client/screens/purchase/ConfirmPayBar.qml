import QtQuick
import Tarvel

// The pay bar: the amount due and the pay button.
Rectangle {
    id: bar
    property ConfirmBottomView viewPay: null

    height: Theme.bottomBarHeight
    color: Theme.cardBackground

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        height: Theme.hairlineWidth
        color: Theme.separator
    }
    Row {
        anchors.left: parent.left
        anchors.leftMargin: Theme.spacingLarge
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacingSmall
        Text {
            anchors.baseline: amount.baseline
            text: "实付款:"
            color: Theme.textPrimary
            font.pixelSize: Theme.fontCallout
        }
        Text {
            id: amount
            objectName: "confirmPayAmount"
            text: bar.viewPay ? bar.viewPay.labelPrice.text : ""
            color: Theme.price
            font.pixelSize: Theme.fontTitle1
            font.weight: Font.DemiBold
        }
    }
    Rectangle {
        objectName: "confirmPayButton"
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        width: 120
        color: touch.pressed ? Theme.price : Theme.badge
        Text {
            anchors.centerIn: parent
            text: bar.viewPay ? bar.viewPay.buttonPay.currentTitle : ""
            color: Theme.textOnDark
            font.pixelSize: Theme.fontHeadline
            font.weight: Font.DemiBold
        }
        MouseArea {
            id: touch
            anchors.fill: parent
            onClicked: bar.viewPay.buttonPay.tap()
        }
    }
}
