import QtQuick
import Tarvel

// One row of the security list: the title with its tip under it, the button on the right.
Rectangle {
    id: cell
    property var cellState: null

    implicitHeight: 68
    color: Theme.cardBackground

    Column {
        anchors.left: parent.left
        anchors.leftMargin: Theme.spacingLarge
        anchors.right: button.left
        anchors.rightMargin: Theme.spacingRegular
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.spacingSmall
        Text {
            objectName: "cellTitle"
            width: parent.width
            text: cell.cellState ? cell.cellState.title : ""
            color: Theme.textPrimary
            font.pixelSize: Theme.fontBody
            elide: Text.ElideRight
        }
        BoundLabel {
            objectName: "labelTip"
            width: parent.width
            state: cell.cellState ? cell.cellState.labelTip : null
            font.pixelSize: Theme.fontFootnote
            elide: Text.ElideRight
        }
    }

    BoundButton {
        id: button
        objectName: "buttonModify"
        anchors.right: parent.right
        anchors.rightMargin: Theme.spacingLarge
        anchors.verticalCenter: parent.verticalCenter
        width: 64
        height: 30
        state: cell.cellState ? cell.cellState.buttonModify : null
        background: Rectangle {
            radius: height / 2
            color: cell.cellState ? cell.cellState.buttonBackgroundColor : Theme.cardBackground
        }
    }
}
