import QtQuick
import Tarvel

// The bar under the cart: the select-all tick, the total of the ticked lines and the submit
// button.
Rectangle {
    id: bar
    property ShoppingCartBottomView bottomView: null

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
        id: selectAll
        objectName: "cartSelectAll"
        anchors.left: parent.left
        anchors.leftMargin: Theme.spacingRegular + 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacingMedium
        Image {
            anchors.verticalCenter: parent.verticalCenter
            width: 22
            height: 22
            sourceSize: Qt.size(44, 44)
            source: bar.bottomView ? Assets.imageUrl(bar.bottomView.buttonSelectAll.currentImageName)
                                   : ""
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: bar.bottomView ? bar.bottomView.buttonSelectAll.currentTitle : ""
            color: Theme.textPrimary
            font.pixelSize: Theme.fontBody
        }
        TapHandler {
            onTapped: bar.bottomView.buttonSelectAll.tap()
        }
    }
    Row {
        anchors.right: submit.left
        anchors.rightMargin: Theme.spacingRegular
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacingSmall
        Text {
            anchors.baseline: total.baseline
            text: "合计:"
            color: Theme.textPrimary
            font.pixelSize: Theme.fontCallout
        }
        Text {
            id: total
            objectName: "cartTotal"
            text: bar.bottomView ? bar.bottomView.labelPrice.text : ""
            color: Theme.price
            font.pixelSize: Theme.fontTitle2
            font.weight: Font.DemiBold
        }
    }
    Rectangle {
        id: submit
        objectName: "cartSubmit"
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        width: 110
        color: submitTouch.pressed ? Theme.price : Theme.badge
        Text {
            anchors.centerIn: parent
            text: bar.bottomView ? bar.bottomView.buttonClearing.currentTitle : ""
            color: Theme.textOnDark
            font.pixelSize: Theme.fontHeadline
            font.weight: Font.DemiBold
        }
        MouseArea {
            id: submitTouch
            anchors.fill: parent
            onClicked: bar.bottomView.buttonClearing.tap()
        }
    }
}
