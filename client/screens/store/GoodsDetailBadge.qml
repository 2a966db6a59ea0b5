import QtQuick
import Tarvel

// A small filled badge with white text beside the header's prices (discount, pre-sale).
Rectangle {
    property alias text: label.text

    anchors.verticalCenter: parent ? parent.verticalCenter : undefined
    width: label.implicitWidth + 4
    height: 20
    radius: 3

    Text {
        id: label
        anchors.centerIn: parent
        color: Theme.textOnDark
        font.pixelSize: Theme.fontFootnote
        font.weight: Font.DemiBold
    }
}
