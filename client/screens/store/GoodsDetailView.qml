import QtQuick
import QtQuick.Controls
import Tarvel

// A game's page: the header and the grouped table scroll above the fixed bottom bar; the share
// sheet opens over everything.
Rectangle {
    id: view
    property GoodsDetailViewController controller: null

    color: Theme.listBackground

    ListView {
        id: table
        objectName: "goodsDetailTable"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: bottomBar.top
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: view.controller ? view.controller.tableMain : null

        header: GoodsDetailHeader {
            width: table.width
            header: view.controller ? view.controller.tableHeaderView : null
            owned: view.controller ? view.controller.owned : false
        }
        delegate: GoodsDetailCellView {
            required property var model
            width: table.width
            row: model
            onLookClicked: tag => view.controller.clickButtonLook(tag)
        }
        footer: Item {
            width: table.width
            height: 16
        }

        // The header grows while the page loads (names, prices and pictures arrive after the
        // first layout); the page then stays at its top rather than showing the cover cut off.
        Connections {
            target: table.headerItem
            function onHeightChanged() {
                if (!table.moving && !table.dragging)
                    table.positionViewAtBeginning()
            }
        }
    }

    GoodsDetailBottomBar {
        id: bottomBar
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        bottomView: view.controller ? view.controller.footerView : null
    }

    ICShareSheet {
        shareView: view.controller ? view.controller.shareView : null
    }
}
