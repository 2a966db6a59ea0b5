import QtQuick
import Tarvel

// A price in yuan ("¥" and the price text as given), optionally followed by the list price
// struck through. An empty list price shows nothing for it.
Row {
    id: label
    property string price
    property string listPrice
    property int pixelSize: Theme.fontBody
    property color color: Theme.price

    spacing: 6

    Text {
        id: current
        text: "¥" + label.price
        color: label.color
        font.pixelSize: label.pixelSize
        font.weight: Font.DemiBold
        visible: label.price.length > 0
    }
    Text {
        anchors.baseline: current.baseline
        text: "¥" + label.listPrice
        color: Theme.textSecondary
        font.pixelSize: Math.round(label.pixelSize * 0.8)
        font.strikeout: true
        visible: label.listPrice.length > 0
    }
}
