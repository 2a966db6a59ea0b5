import QtQuick
import QtQuick.Controls
import Tarvel

// The 64-point bar every screen carries: status-bar strip plus a 44-point title row. Given a
// controller it shows that controller's title (or title view) and bar items.
Rectangle {
    id: bar
    property string title
    property ViewController controller: null
    property alias leftItem: leftSlot.data
    property alias rightItem: rightSlot.data

    implicitHeight: Theme.navigationBarHeight
    // A screen base carries its bar's look; other controllers get the Theme's.
    readonly property bool screenLook: controller !== null && controller.navBarColor !== undefined

    color: controller && controller.navigationBarTransparent ? "transparent"
                                                             : screenLook ? controller.navBarColor
                                                                          : Theme.navigationBar

    Item {
        id: row
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: Theme.rowHeight

        Row {
            id: leftSlot
            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            BarButton {
                item: bar.controller ? bar.controller.leftBarItem : null
            }
            // The platform's back button, for a pushed screen without a left item of its own.
            Item {
                readonly property NavigationController stack: bar.controller ? bar.controller.navigationController : null
                width: 44
                height: Theme.rowHeight
                visible: stack !== null && stack.depth > 1 && stack.viewControllerAt(0) !== bar.controller
                         && bar.controller.leftBarItem.empty && !bar.controller.leftBarItem.hidden
                opacity: backTouch.pressed ? 0.5 : 1
                Image {
                    anchors.fill: parent
                    source: "icons/navLeftImageIcon.svg"
                    sourceSize: Qt.size(44, 44)
                }
                MouseArea {
                    id: backTouch
                    anchors.fill: parent
                    onClicked: parent.stack.goBack()
                }
            }
        }
        Label {
            anchors.centerIn: parent
            width: parent.width - 140
            horizontalAlignment: Text.AlignHCenter
            elide: Text.ElideRight
            text: bar.controller ? bar.controller.title : bar.title
            color: bar.screenLook ? bar.controller.navTitleColor : Theme.navigationTitle
            font.pixelSize: bar.screenLook ? bar.controller.navTitleFontSize : Theme.fontHeadline
            font.weight: Font.Medium
            visible: !titleView.active
        }
        Loader {
            id: titleView
            anchors.centerIn: parent
            width: parent.width - 100
            height: 30
            active: bar.controller !== null && bar.controller.titleViewSource.toString().length > 0
            source: active ? bar.controller.titleViewSource : ""
            onLoaded: if (item.hasOwnProperty("controller")) item.controller = bar.controller
        }
        Row {
            id: rightSlot
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            layoutDirection: Qt.RightToLeft
            BarButton {
                item: bar.controller ? bar.controller.rightBarItem : null
            }
        }
    }
}
