import QtQuick
import Tarvel

// One entry of the detail table: a section's header (or gap) or one cell in the layout its
// identifier names. Hidden cells take no room.
Item {
    id: cell
    property var row: null
    signal lookClicked(int tag)

    readonly property bool isSection: row !== null && row.kind === "section"
    objectName: row === null ? "" : isSection ? "goodsDetailSection" + row.section
                                              : "goodsDetailCell" + row.section + "_" + row.rowIndex
    readonly property string identifier: row && !isSection ? row.identifier : ""
    readonly property bool shown: row !== null && (isSection || !row.hidden)

    // A link row's title with its emphasised part coloured: the base game's name in the brand
    // colour, the counts of related items in the accent.
    function styledTitle() {
        const parts = row.titleParts
        const escape = text => text.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/>/g, "&gt;")
        if (parts[1].length === 0)
            return escape(parts[0])
        const colour = row.type === 2 ? Theme.navigationBar : Theme.accent
        return escape(parts[0]) + "<font color=\"" + colour + "\">" + escape(parts[1]) + "</font>"
                + escape(parts[2])
    }

    visible: shown
    height: !shown ? 0 : isSection ? sectionHeader.height : content.height + 1

    // Section header: a gap, with the section's title when it has one.
    Item {
        id: sectionHeader
        visible: cell.isSection
        width: parent.width
        height: cell.isSection && cell.row.title.length > 0 ? 36 : 10
        Text {
            anchors.left: parent.left
            anchors.leftMargin: 14
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 7
            text: cell.isSection ? cell.row.title : ""
            color: Theme.textSecondary
            font.pixelSize: Theme.fontSubhead
        }
    }

    Rectangle {
        id: content
        visible: !cell.isSection
        width: parent.width
        height: Math.max(minimumHeight, body.implicitHeight + 2 * padding)
        readonly property int padding: cell.identifier === "GoodsDetailCell5" ? 14 : 10
        readonly property int minimumHeight: cell.identifier === "GoodsDetailCell3" ? 36 : 44
        color: cell.identifier === "GoodsDetailCell1" ? Theme.highlightBackground : lookTouch.pressed ? Theme.rowPressed : Theme.cardBackground

        // A link row opens its related items from anywhere on the row.
        MouseArea {
            id: lookTouch
            anchors.fill: parent
            enabled: cell.identifier === "GoodsDetailCell4"
            onClicked: cell.lookClicked(cell.row.lookTag)
        }

        Row {
            id: body
            x: 14
            width: parent.width - 28
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            Image {
                id: icon
                anchors.verticalCenter: parent.verticalCenter
                width: 18
                height: 18
                sourceSize: Qt.size(36, 36)
                source: cell.identifier === "GoodsDetailCell1" ? Assets.imageUrl("goodsDetail_warming_1")
                      : cell.row && cell.row.icon ? Assets.imageUrl(cell.row.icon) : ""
                visible: source.toString().length > 0
            }
            Text {
                id: tagLabel
                anchors.verticalCenter: parent.verticalCenter
                visible: cell.identifier === "GoodsDetailCell3"
                width: 64
                text: cell.row && cell.row.tag ? cell.row.tag : ""
                color: Theme.textSecondary
                font.pixelSize: Theme.fontCallout
            }
            Text {
                id: title
                anchors.verticalCenter: parent.verticalCenter
                width: body.width - (icon.visible ? icon.width + body.spacing : 0)
                       - (tagLabel.visible ? tagLabel.width + body.spacing : 0)
                       - (look.visible ? look.width + body.spacing : 0)
                text: !cell.row || cell.isSection ? "" : cell.identifier === "GoodsDetailCell4" ? cell.styledTitle() : cell.row.title
                textFormat: cell.identifier === "GoodsDetailCell4" ? Text.StyledText : Text.PlainText
                wrapMode: Text.Wrap
                lineHeight: cell.identifier === "GoodsDetailCell5" ? 1.35 : 1.0
                color: {
                    if (cell.identifier === "GoodsDetailCell1")
                        return Theme.price
                    if (cell.identifier === "GoodsDetailCell2")
                        return cell.row.type === 2 ? Theme.price : Theme.accent
                    if (cell.identifier === "GoodsDetailCell5")
                        return Theme.textBody
                    return Theme.textPrimary
                }
                font.pixelSize: cell.identifier === "GoodsDetailCell5" ? Theme.fontCallout : Theme.fontDetailRow
            }
            Item {
                id: look
                objectName: "lookButton"
                visible: cell.identifier === "GoodsDetailCell4"
                anchors.verticalCenter: parent.verticalCenter
                width: 52
                height: 30
                opacity: lookTouch.pressed ? 0.5 : 1
                Row {
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        text: "查看"
                        color: Theme.textSecondary
                        font.pixelSize: Theme.fontSubhead
                    }
                    Image {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 16
                        height: 16
                        sourceSize: Qt.size(32, 32)
                        source: Assets.imageUrl("goodsDetail_arrow")
                    }
                }
            }
        }

        Rectangle {
            anchors.left: parent.left
            anchors.leftMargin: 14
            anchors.right: parent.right
            anchors.top: parent.bottom
            height: 1
            color: Theme.hairline
        }
    }
}
