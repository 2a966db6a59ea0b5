import QtQuick
import QtQuick.Controls
import Tarvel

// Search results: the search box, the count line and the grid of games.
Item {
    id: view
    property SearchDetailViewController controller: null

    function reportWidth() {
        if (controller && width > 0)
            controller.screenWidth = width
    }
    onWidthChanged: reportWidth()
    onControllerChanged: reportWidth()

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    Rectangle {
        id: searchBar
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        height: 52
        color: Theme.cardBackground

        Rectangle {
            anchors.fill: parent
            anchors.margins: 10
            radius: height / 2
            color: Theme.fieldBackground
            BoundTextField {
                anchors.fill: parent
                state: view.controller ? view.controller.fieldSearch : null
                background: Item {}
                font.pixelSize: Theme.fontCallout
                topPadding: 0
                bottomPadding: 0
                verticalAlignment: TextInput.AlignVCenter
            }
        }
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 1
            color: Theme.separator
        }
    }

    BoundLabel {
        id: countLine
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: searchBar.bottom
        leftPadding: 12
        height: text.length > 0 ? 32 : 0
        verticalAlignment: Text.AlignVCenter
        font.pixelSize: Theme.fontSubhead
        state: view.controller ? view.controller.labelTitle : null
        color: Theme.textSecondary
    }

    GridView {
        id: grid
        objectName: "searchGrid"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: countLine.bottom
        anchors.bottom: parent.bottom
        clip: true
        cellWidth: width / 2
        cellHeight: (view.controller ? view.controller.coverHeight : 97) + 92
        model: view.controller ? view.controller.collectionMenu : null
        cacheBuffer: 400

        delegate: Item {
            id: slot
            required property int index
            required property var row
            width: grid.cellWidth
            height: grid.cellHeight

            HomePageViewCell {
                x: slot.index % 2 === 0 ? 10 : 5
                y: 0
                width: view.controller ? view.controller.itemWidth : slot.width - 15
                height: slot.height - 10
                coverHeight: view.controller ? view.controller.coverHeight : width * 9 / 16
                row: slot.row
                onTapped: view.controller.clickCellAtIndex(slot.index)
            }
        }

        footer: LoadMoreFooter {
            target: grid
            footer: view.controller ? view.controller.refreshFooter : null
            visible: grid.count > 0
            height: visible ? 44 : 0
        }
    }

    RefreshHeader {
        anchors.left: grid.left
        anchors.right: grid.right
        anchors.top: grid.top
        target: grid
        header: view.controller ? view.controller.refreshHeader : null
    }

    // A finished search without results.
    Column {
        anchors.centerIn: grid
        spacing: 12
        visible: grid.count === 0 && countLine.text.length > 0
                 && view.controller !== null && !view.controller.refreshHeader.refreshing
        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 80
            height: 80
            sourceSize: Qt.size(160, 160)
            source: Assets.imageUrl("homepage_empty")
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "没有找到相关游戏，换个关键词试试"
            color: Theme.textSecondary
            font.pixelSize: Theme.fontCallout
        }
    }
}
