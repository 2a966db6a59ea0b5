import QtQuick
import Tarvel

// The hairline between two rows of a security form, indented like the rows' labels.
Rectangle {
    width: parent ? parent.width : 0
    height: Theme.hairlineWidth
    color: Theme.cardBackground
    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: Theme.spacingLarge
        color: Theme.separator
    }
}
