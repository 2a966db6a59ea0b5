import QtQuick
import Tarvel

// A side panel of the sliding-panel root: the app's name and the panel's title on a dark band.
Rectangle {
    id: view
    property ViewController controller: null

    color: "#1f2d4d"

    Column {
        x: 24
        y: 72
        spacing: 10
        Text {
            text: "Tarvel游戏"
            color: "white"
            font.pixelSize: 22
            font.family: Theme.fontFamily
            font.weight: Font.DemiBold
        }
        Text {
            text: view.controller ? view.controller.title : ""
            color: "#aab6d3"
            font.pixelSize: 15
            font.family: Theme.fontFamily
        }
    }
}
