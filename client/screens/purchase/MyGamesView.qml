import QtQuick
import Tarvel

// "我的游戏": a grid of the owned games' covers under a pull-down refresh; a cover opens the game.
Rectangle {
    id: view
    property MyGamesViewController controller: null

    readonly property real spacing: 10
    readonly property real cellWidth: (width - 3 * spacing) / 2

    color: Theme.background

    GridView {
        id: grid
        objectName: "myGamesGrid"
        anchors.fill: parent
        anchors.leftMargin: view.spacing
        clip: true
        header: Item {
            width: 1
            height: view.spacing
        }
        footer: Item {
            width: 1
            height: view.spacing
        }
        cellWidth: view.cellWidth + view.spacing
        cellHeight: Math.round(view.cellWidth * 9 / 16) + view.spacing
        model: view.controller ? view.controller.collectionMenu : null
        delegate: Rectangle {
            id: cell
            required property int index
            required property string imageUrl
            objectName: "myGamesCell" + index
            width: view.cellWidth
            height: Math.round(view.cellWidth * 9 / 16)
            color: Theme.cardBackground
            border.width: Theme.hairlineWidth
            border.color: Theme.separator
            RemoteImage {
                objectName: "myGamesCover"
                anchors.fill: parent
                anchors.margins: Theme.hairlineWidth
                source: cell.imageUrl
            }
            MouseArea {
                anchors.fill: parent
                onClicked: view.controller.didSelectItemAtIndex(cell.index)
            }
        }
    }

    RefreshHeader {
        anchors.left: grid.left
        anchors.right: grid.right
        anchors.top: grid.top
        target: grid
        header: view.controller ? view.controller.refreshHeader : null
    }

    Column {
        objectName: "myGamesEmpty"
        anchors.centerIn: parent
        spacing: Theme.spacingMedium
        visible: grid.count === 0 && view.controller !== null
                 && !view.controller.refreshHeader.refreshing
        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 64
            height: 64
            sourceSize: Qt.size(128, 128)
            source: Assets.imageUrl("library_games")
            opacity: 0.7
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "还没有购买过游戏"
            color: Theme.textSecondary
            font.pixelSize: Theme.fontBody
        }
    }
}
