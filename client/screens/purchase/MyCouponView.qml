import QtQuick
import Tarvel

// "我的优惠券": the header and the six coupon cards, with pull-down and load-more.
Rectangle {
    id: view
    property MyCouponViewController controller: null

    color: Theme.background

    ListView {
        id: list
        objectName: "myCouponTable"
        anchors.fill: parent
        clip: true
        model: view.controller ? view.controller.rowCount : 0
        header: MyCouponHeaderView {
            width: ListView.view.width
        }
        delegate: MyConponViewCell {
            required property int index
            objectName: "myCouponCell" + index
            width: ListView.view.width
            height: view.controller.rowHeight
            onClicked: view.controller.didSelectRowAtIndex(index)
        }
        footer: LoadMoreFooter {
            target: list
            footer: view.controller ? view.controller.refreshFooter : null
        }
    }

    RefreshHeader {
        anchors.left: list.left
        anchors.right: list.right
        anchors.top: list.top
        target: list
        header: view.controller ? view.controller.refreshHeader : null
    }
}
