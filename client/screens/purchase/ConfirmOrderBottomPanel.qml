import QtQuick
import Tarvel

// Under the order's games: the coupon (the list of coupons, the code field with its use and
// detach buttons), the amounts, and the payment choices.
Column {
    id: panel
    property ConfirmOrderBottomView footerView: null

    spacing: 0

    component SectionTitle: Rectangle {
        property alias text: label.text
        width: panel.width
        height: 40
        color: Theme.background
        Text {
            id: label
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacingLarge
            anchors.bottom: parent.bottom
            anchors.bottomMargin: Theme.spacingSmall + Theme.spacingTiny
            color: Theme.textSecondary
            font.pixelSize: Theme.fontSubhead
        }
    }
    component SmallButton: Rectangle {
        id: small
        property ButtonState button: null
        property bool filled: true
        width: 56
        height: 32
        radius: Theme.radiusMedium
        color: filled ? (touch.pressed ? Theme.navigationBarDark : Theme.navigationBar)
                      : Theme.cardBackground
        border.width: filled ? 0 : Theme.hairlineWidth
        border.color: Theme.controlBorder
        Text {
            anchors.centerIn: parent
            text: small.button ? small.button.currentTitle : ""
            color: small.filled ? Theme.textOnDark : Theme.textPrimary
            font.pixelSize: Theme.fontCallout
        }
        MouseArea {
            id: touch
            anchors.fill: parent
            onClicked: small.button.tap()
        }
    }
    component PaymentRow: Rectangle {
        id: payment
        property ButtonState button: null
        property string note
        width: panel.width
        height: 56
        color: touch.pressed ? Theme.rowPressed : Theme.cardBackground
        Image {
            id: logo
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            width: 30
            height: 30
            sourceSize: Qt.size(60, 60)
            source: payment.button ? Assets.imageUrl(payment.button.imageName) : ""
        }
        Column {
            anchors.left: logo.right
            anchors.leftMargin: Theme.spacingRegular
            anchors.verticalCenter: parent.verticalCenter
            Text {
                text: payment.button ? payment.button.title : ""
                color: Theme.textPrimary
                font.pixelSize: Theme.fontBody
            }
            Text {
                text: payment.note
                color: Theme.textSecondary
                font.pixelSize: Theme.fontFootnote
            }
        }
        Image {
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            width: 22
            height: 22
            sourceSize: Qt.size(44, 44)
            source: Assets.imageUrl(payment.button && payment.button.selected ? "shoppingcar_select"
                                                                           : "shoppingcar_unselect")
        }
        MouseArea {
            id: touch
            anchors.fill: parent
            onClicked: payment.button.tap()
        }
    }
    component Line: Rectangle {
        width: panel.width - Theme.spacingLarge
        x: Theme.spacingLarge
        height: Theme.hairlineWidth
        color: Theme.hairline
    }
    component AmountRow: Rectangle {
        id: amountRow
        property string title
        property string amount
        width: panel.width
        height: 44
        color: Theme.cardBackground
        Text {
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            text: amountRow.title
            color: Theme.textPrimary
            font.pixelSize: Theme.fontBody
        }
        Text {
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            text: amountRow.amount
            color: Theme.price
            font.pixelSize: Theme.fontBody
        }
    }

    SectionTitle { text: "优惠券" }
    Rectangle {
        objectName: "confirmSelectCoupon"
        width: panel.width
        height: 44
        color: couponTouch.pressed ? Theme.rowPressed : Theme.cardBackground
        Text {
            objectName: "confirmCouponNum"
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            text: panel.footerView ? panel.footerView.labelCouponNum.text : ""
            color: Theme.textPrimary
            font.pixelSize: Theme.fontBody
        }
        Text {
            anchors.right: arrow.left
            anchors.rightMargin: Theme.spacingSmall
            anchors.verticalCenter: parent.verticalCenter
            text: panel.footerView ? panel.footerView.buttonSelectCoupon.currentTitle : ""
            color: Theme.textSecondary
            font.pixelSize: Theme.fontCallout
        }
        Image {
            id: arrow
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacingMedium
            anchors.verticalCenter: parent.verticalCenter
            width: 18
            height: 18
            sourceSize: Qt.size(36, 36)
            source: Assets.imageUrl("goodsDetail_arrow")
        }
        MouseArea {
            id: couponTouch
            anchors.fill: parent
            onClicked: panel.footerView.buttonSelectCoupon.tap()
        }
    }
    Line {}
    Rectangle {
        width: panel.width
        height: 56
        color: Theme.cardBackground
        Rectangle {
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacingLarge
            anchors.right: sure.left
            anchors.rightMargin: Theme.spacingMedium
            anchors.verticalCenter: parent.verticalCenter
            height: 36
            radius: Theme.radiusMedium
            color: field.enabled ? Theme.cardBackground : Theme.listBackground
            border.width: Theme.hairlineWidth
            border.color: Theme.controlBorder
            BoundTextField {
                id: field
                objectName: "confirmCouponField"
                anchors.fill: parent
                state: panel.footerView ? panel.footerView.fieldCoupon : null
                background: null
                font.pixelSize: Theme.fontBody
            }
        }
        SmallButton {
            id: sure
            objectName: "confirmCouponSure"
            anchors.right: cancel.left
            anchors.rightMargin: Theme.spacingMedium
            anchors.verticalCenter: parent.verticalCenter
            button: panel.footerView ? panel.footerView.buttonSure : null
        }
        SmallButton {
            id: cancel
            objectName: "confirmCouponCancel"
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacingLarge
            anchors.verticalCenter: parent.verticalCenter
            filled: false
            button: panel.footerView ? panel.footerView.buttonCancel : null
        }
    }

    SectionTitle { text: "金额明细" }
    AmountRow {
        objectName: "confirmGoodsPrice"
        title: "商品金额"
        amount: panel.footerView ? panel.footerView.labelGoodsPrice.text : ""
    }
    Line {}
    AmountRow {
        objectName: "confirmCouponPrice"
        title: "优惠券抵扣"
        amount: panel.footerView ? panel.footerView.labelCouponPrice.text : ""
    }

    SectionTitle { text: "支付方式" }
    PaymentRow {
        objectName: "confirmPayZFB"
        button: panel.footerView ? panel.footerView.buttonZFB : null
        note: "支付宝账户付款"
    }
    Line {}
    PaymentRow {
        objectName: "confirmPayWX"
        button: panel.footerView ? panel.footerView.buttonWX : null
        note: "推荐已安装微信的用户使用"
    }
    Item {
        width: panel.width
        height: Theme.spacingXLarge
    }
}
