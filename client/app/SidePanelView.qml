import QtQuick
import Tarvel

// A side panel of the sliding-panel root: the app's name and the panel's title on a dark band.
Rectangle {
    id: view
    property ViewController controller: null

    color: Theme.sidePanelBackground

    Column {
        x: 24
        y: 72
        spacing: 10
        Text {
            text: "Tarvel游戏"
            color: Theme.textOnDark
            font.pixelSize: Theme.fontLargeTitle
            font.family: Theme.fontFamily
            font.weight: Font.DemiBold
        }
        Text {
            text: view.controller ? view.controller.title : ""
            color: Theme.sidePanelText
            font.pixelSize: Theme.fontBody
            font.family: Theme.fontFamily
        }
    }
}
