import QtQuick
import Tarvel

// The user guide: full-screen pictures side by side, paged, without scroll indicators. The last
// picture draws a "立即体验" button; a see-through button over it closes the guide.
Rectangle {
    id: view
    property UserGuideViewController controller: null

    color: Theme.cardBackground

    ListView {
        id: pages
        objectName: "guidePages"
        anchors.fill: parent
        orientation: ListView.Horizontal
        snapMode: ListView.SnapOneItem
        highlightRangeMode: ListView.StrictlyEnforceRange
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        model: view.controller ? view.controller.imageNames : []
        onCurrentIndexChanged: if (view.controller) view.controller.currentPage = currentIndex

        delegate: Image {
            id: page
            required property int index
            required property string modelData
            width: pages.width
            height: pages.height
            source: Assets.imageUrl(modelData)
            sourceSize: Qt.size(width * 2, height * 2)
            fillMode: Image.PreserveAspectCrop

            MouseArea {
                objectName: "guideMoveOut"
                visible: page.index === pages.count - 1
                // Where the picture draws its button (375 x 667 design).
                x: page.width * 97 / 375
                y: page.height * 560 / 667
                width: page.width * 181 / 375
                height: page.height * 48 / 667
                onClicked: view.controller.actionMoveOut()
            }
        }
    }
}
