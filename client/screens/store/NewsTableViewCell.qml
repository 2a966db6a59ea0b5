import QtQuick
import Tarvel

// One row of the news list: a tag, the headline and a disclosure arrow, greyed while pressed.
Rectangle {
    id: cell
    property var row: ({})
    property bool highlighted: false
    signal tapped()

    color: highlighted || touch.pressed ? Theme.rowSelected : Theme.cardBackground

    Rectangle {
        id: tag
        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: tagText.implicitWidth + 10
        height: 18
        radius: 3
        color: "transparent"
        border.color: Theme.accent
        Text {
            id: tagText
            anchors.centerIn: parent
            text: cell.row.tag || ""
            color: Theme.accent
            font.pixelSize: Theme.fontCaption
        }
    }
    Text {
        anchors.left: tag.right
        anchors.leftMargin: 8
        anchors.right: arrow.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: cell.row.title || ""
        color: Theme.textPrimary
        font.pixelSize: Theme.fontCallout
        elide: Text.ElideRight
    }
    Text {
        id: arrow
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: "›"
        color: Theme.textPlaceholder
        font.pixelSize: Theme.fontTitle1
    }
    Rectangle {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.right: parent.right
        height: 1
        color: Theme.separator
    }
    MouseArea {
        id: touch
        anchors.fill: parent
        onClicked: cell.tapped()
    }
}
