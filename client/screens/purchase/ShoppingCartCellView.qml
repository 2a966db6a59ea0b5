import QtQuick
import Tarvel

// One cart line: a card with the tick, the cover, the name, the prices and the discount badge. A
// sideways drag slides the card to uncover the delete button; the cell object decides where it
// goes, this view only passes the finger on.
Item {
    id: root
    property ShoppingCartCell cell: null
    signal tapped()

    height: 112
    clip: true

    Rectangle {
        id: deleteButton
        objectName: "cartDeleteButton"
        anchors.right: parent.right
        anchors.rightMargin: Theme.spacingMedium
        anchors.top: card.top
        anchors.bottom: card.bottom
        width: 52
        radius: Theme.radiusMedium
        color: deleteTouch.pressed ? Theme.price : Theme.destructive
        visible: root.cell !== null && root.cell.contentX < card.restX

        Text {
            anchors.centerIn: parent
            width: 20
            text: "删除"
            wrapMode: Text.WrapAnywhere
            horizontalAlignment: Text.AlignHCenter
            color: Theme.textOnDark
            font.pixelSize: Theme.fontCallout
        }
        MouseArea {
            id: deleteTouch
            anchors.fill: parent
            onClicked: root.cell.clickDelete()
        }
    }

    Rectangle {
        id: card
        objectName: "cartCard"
        readonly property real restX: root.cell ? root.cell.closedX : 0
        x: root.cell ? root.cell.contentX : restX
        y: 0
        width: root.width - 20
        height: root.height
        radius: Theme.radiusMedium
        color: Theme.cardBackground

        Behavior on x {
            enabled: root.cell !== null && root.cell.settling
            NumberAnimation {
                duration: root.cell ? root.cell.settleDuration : 250
                easing.type: Easing.OutCubic
            }
        }

        // Taps tick the line; sideways drags go to the cell.
        MouseArea {
            id: touch
            objectName: "cartCardTouch"
            anchors.fill: parent
            property real pressX: 0
            property real pressY: 0
            property bool panning: false
            preventStealing: panning

            function fingerInCell(mouse) {
                return mapToItem(root, mouse.x, mouse.y)
            }
            onPressed: (mouse) => {
                const point = fingerInCell(mouse)
                pressX = point.x
                pressY = point.y
                panning = false
            }
            onPositionChanged: (mouse) => {
                const point = fingerInCell(mouse)
                const dx = point.x - pressX
                const dy = point.y - pressY
                if (!panning) {
                    if (Math.abs(dx) < 6 || Math.abs(dx) < Math.abs(dy)
                            || !root.cell.gestureShouldBegin(dx, dy))
                        return
                    panning = true
                    root.cell.panBegan()
                }
                root.cell.panMoved(dx)
            }
            onReleased: {
                if (panning)
                    root.cell.panEnded()
            }
            onCanceled: {
                if (panning)
                    root.cell.panEnded()
                panning = false
            }
            onClicked: {
                if (!panning && !root.cell.open)
                    root.tapped()
                panning = false
            }
        }
        Image {
            id: tick
            objectName: "cartTick"
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacingRegular
            anchors.verticalCenter: parent.verticalCenter
            width: 22
            height: 22
            sourceSize: Qt.size(44, 44)
            source: Assets.imageUrl(root.cell && root.cell.selected ? "shoppingcar_select"
                                                                     : "shoppingcar_unselect")
        }
        RemoteImage {
            id: cover
            objectName: "cartCover"
            anchors.left: tick.right
            anchors.leftMargin: Theme.spacingRegular
            anchors.verticalCenter: parent.verticalCenter
            width: 96
            height: 54
            source: root.cell ? root.cell.imageGoods : ""
        }
        Column {
            anchors.left: cover.right
            anchors.leftMargin: Theme.spacingRegular
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacingRegular
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.spacingSmall

            Text {
                width: parent.width
                text: root.cell ? root.cell.labelName : ""
                color: Theme.textPrimary
                font.pixelSize: Theme.fontBody
                elide: Text.ElideRight
                maximumLineCount: 2
                wrapMode: Text.WrapAnywhere
            }
            Row {
                spacing: Theme.spacingSmall
                Text {
                    objectName: "cartOldPrice"
                    anchors.verticalCenter: parent.verticalCenter
                    text: root.cell ? root.cell.labelOldPrice : ""
                    visible: root.cell !== null && !root.cell.cutOffHidden && text.length > 0
                    color: Theme.textSecondary
                    font.pixelSize: Theme.fontFootnote
                    font.strikeout: true
                }
                Rectangle {
                    objectName: "cartCutOff"
                    anchors.verticalCenter: parent.verticalCenter
                    visible: root.cell !== null && !root.cell.cutOffHidden
                    width: cutOffText.implicitWidth
                    height: cutOffText.implicitHeight + Theme.spacingTiny
                    radius: Theme.radiusSmall
                    color: Theme.badge
                    Text {
                        id: cutOffText
                        anchors.centerIn: parent
                        text: root.cell ? root.cell.labelCutOff : ""
                        color: Theme.textOnDark
                        font.pixelSize: Theme.fontCaption
                        font.weight: Font.DemiBold
                    }
                }
            }
            Text {
                text: root.cell ? root.cell.labelPrice : ""
                color: Theme.price
                font.pixelSize: Theme.fontTitle3
                font.weight: Font.DemiBold
            }
        }
    }

}
