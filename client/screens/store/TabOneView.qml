import QtQuick
import QtQuick.Controls
import Tarvel

// The home page: carousel, sort strip and a two-column grid of games under a see-through bar.
Item {
    id: view
    property TabOneViewController controller: null

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

    GridView {
        id: grid
        objectName: "homeGrid"
        anchors.fill: parent
        anchors.topMargin: Theme.navigationBarHeight
                           + (offlineBanner.visible ? offlineBanner.height : 0)
        clip: true
        cellWidth: width / 2
        cellHeight: (view.controller ? view.controller.coverHeight : 97) + 92
        model: view.controller ? view.controller.collectionMenu : null
        cacheBuffer: 400

        // Placed by bindings rather than a Column, whose height follows only at the next polish:
        // a header growing after the grid has laid out its first row leaves the page scrolled
        // past the carousel. The carousel shows from the controller's rows for the same reason.
        header: Item {
            width: grid.width
            height: sortStrip.y + sortStrip.height + 10

            Item {
                id: carousel
                width: parent.width
                // The carousel pictures are 750 x 300.
                height: Math.round(width * 0.4)
                visible: view.controller !== null && view.controller.scrollBanner.count > 0

                ListView {
                    id: banners
                    objectName: "homeBanners"
                    anchors.fill: parent
                    orientation: ListView.Horizontal
                    snapMode: ListView.SnapOneItem
                    highlightRangeMode: ListView.StrictlyEnforceRange
                    boundsBehavior: Flickable.StopAtBounds
                    clip: true
                    model: view.controller ? view.controller.scrollBanner : null
                    delegate: RemoteImage {
                        required property int tag
                        required property string imageUrl
                        width: banners.width
                        height: banners.height
                        source: imageUrl
                        MouseArea {
                            anchors.fill: parent
                            onClicked: view.controller.clickImageBanner(parent.tag)
                        }
                    }
                    onMovementEnded: view.controller.scrollViewDidEndDecelerating(contentX)
                }

                Row {
                    readonly property ICPageControl dots: view.controller ? view.controller.pageControl : null
                    anchors.horizontalCenter: parent.horizontalCenter
                    anchors.bottom: parent.bottom
                    anchors.bottomMargin: 8
                    spacing: 8
                    Repeater {
                        model: parent.dots ? parent.dots.dots : []
                        Rectangle {
                            required property color modelData
                            width: parent.dots.dotRadius
                            height: width
                            radius: width / 2
                            color: modelData
                        }
                    }
                }
            }

            Item {
                id: sortStrip
                y: carousel.visible ? carousel.height : 0
                width: parent.width
                height: 44
                Repeater {
                    model: view.controller ? view.controller.scrollSort : []
                    BoundButton {
                        required property var modelData
                        required property int index
                        x: index * view.width / 4
                        width: view.width / 4 + 1
                        height: 44
                        state: modelData
                        font.pixelSize: Theme.fontBody
                    }
                }
            }
        }

        delegate: Item {
            id: slot
            required property int index
            required property var row
            width: grid.cellWidth
            height: grid.cellHeight

            HomePageViewCell {
                x: slot.index % 2 === 0 ? 10 : 5
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
        }
    }

    RefreshHeader {
        anchors.left: grid.left
        anchors.right: grid.right
        anchors.top: grid.top
        target: grid
        header: view.controller ? view.controller.refreshHeader : null
    }

    // Behind the see-through bar.
    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        height: Theme.navigationBarHeight
        color: Theme.navigationBar
    }

    // Shown from what was kept of earlier visits while the network is away.
    Rectangle {
        id: offlineBanner
        objectName: "homeOfflineBanner"
        readonly property LabelState label: view.controller ? view.controller.labelOffline : null
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.topMargin: Theme.navigationBarHeight
        height: Theme.offlineBannerHeight
        visible: label !== null && !label.hidden
        color: Theme.offlineBanner

        Text {
            objectName: "homeOfflineText"
            anchors.fill: parent
            anchors.leftMargin: Theme.spacingRegular
            anchors.rightMargin: Theme.spacingRegular
            verticalAlignment: Text.AlignVCenter
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
            text: parent.label ? parent.label.text : ""
            color: Theme.offlineBannerText
            font.pixelSize: Theme.fontFootnote
        }
        Rectangle {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            height: Theme.hairlineWidth
            color: Theme.offlineBannerLine
        }
    }

    // Until the first home answer: the whole page is a retry button.
    Rectangle {
        objectName: "homeRetry"
        anchors.fill: parent
        anchors.topMargin: Theme.navigationBarHeight
        color: Theme.background
        visible: view.controller !== null && view.controller.buttonRefresh !== null

        Column {
            anchors.centerIn: parent
            spacing: 14
            Image {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 96
                height: 96
                sourceSize: Qt.size(192, 192)
                source: Assets.imageUrl("homepage_empty")
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: view.controller && view.controller.buttonRefresh ? view.controller.buttonRefresh.title : ""
                color: Theme.textSecondary
                font.pixelSize: Theme.fontBody
            }
        }
        MouseArea {
            anchors.fill: parent
            onClicked: if (view.controller.buttonRefresh) view.controller.buttonRefresh.tap()
        }
    }
}
