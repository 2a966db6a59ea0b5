import QtQuick
import Tarvel

// One game of a store grid: the cover with its discount, pre-sale and "已拥有" badges, the title and the
// price with the list price struck through when it differs. `row` holds the cell's values.
Rectangle {
    id: cell
    property var row: ({})
    property real coverHeight: width * 9 / 16
    signal tapped()

    objectName: "homePageViewCell"
    readonly property bool coverReady: cover.status === Image.Ready
    radius: 6
    color: Theme.cardBackground
    clip: true

    RemoteImage {
        id: cover
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        height: cell.coverHeight
        source: cell.row.imageUrl || ""
    }

    // In the cover's lower right corner: the covers' own marks sit at the upper left, and the
    // price row has no room to spare for long prices.
    Rectangle {
        anchors.right: cover.right
        anchors.bottom: cover.bottom
        anchors.margins: 8
        height: 20
        width: discountText.implicitWidth + 12
        radius: 3
        color: Theme.price
        visible: cell.row.discountHidden === false
        Text {
            id: discountText
            anchors.centerIn: parent
            text: (cell.row.discount || "").trim()
            color: Theme.textOnDark
            font.pixelSize: Theme.fontCaption
            font.weight: Font.DemiBold
        }
    }

    // The upper right corner: "已拥有" and the pre-sale badge side by side, clear of the titles
    // the covers carry at their lower left.
    Row {
        anchors.right: cover.right
        anchors.top: cover.top
        anchors.margins: 8
        spacing: Theme.spacingSmall

        OwnedBadge {
            outlined: true
            visible: cell.row.owned === true
        }
        Rectangle {
            height: 20
            width: presellText.implicitWidth + 12
            radius: 10
            color: Theme.accent
            visible: cell.row.presellHidden === false
            Text {
                id: presellText
                anchors.centerIn: parent
                text: cell.row.presell || ""
                color: Theme.textOnDark
                font.pixelSize: Theme.fontCaption
                font.weight: Font.DemiBold
            }
        }
    }

    Text {
        id: title
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: cover.bottom
        anchors.margins: 8
        text: cell.row.title || ""
        color: Theme.textPrimary
        font.pixelSize: Theme.fontSubhead
        lineHeight: 1.1
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
        height: 34
    }

    PriceLabel {
        id: price
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        anchors.leftMargin: 8
        anchors.bottomMargin: 8
        price: cell.row.salePrice || ""
        listPrice: cell.row.listPrice || ""
        pixelSize: Theme.fontBody
    }

    MouseArea {
        anchors.fill: parent
        onClicked: cell.tapped()
    }
}
