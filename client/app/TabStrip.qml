import QtQuick
import Tarvel

// The main tab bar's strip: a white band with a thin grey line on top, four picture buttons and
// the red cart badge. It slides down out of sight when the tab bar hides it and back up when it
// shows again.
Item {
    id: strip
    // The tab container that loaded this strip holds the controller.
    readonly property var host: parent ? parent.parent : null
    readonly property ICTabBarController controller: host && host.tabBarController
                                                     && host.tabBarController.tabBarView !== undefined
                                                     ? host.tabBarController : null
    readonly property ICTabBarView look: controller ? controller.tabBarView : null
    readonly property LabelState badge: AppDelegate.labelRedDot
    property real offset: 0

    implicitHeight: 49
    clip: true

    onWidthChanged: if (look && width > 0) look.width = width
    onLookChanged: if (look && width > 0) look.width = width

    function follow(animated) {
        const target = controller && controller.isHide ? height : 0
        slide.stop()
        if (!animated) {
            offset = target
            return
        }
        slide.from = offset
        slide.to = target
        slide.start()
    }

    NumberAnimation {
        id: slide
        target: strip
        property: "offset"
        duration: strip.look ? strip.look.hideAnimationDuration : 200
        easing.type: Easing.InOutQuad
    }
    Connections {
        target: strip.controller
        function onHideAnimationStarted() { strip.follow(true) }
    }
    Component.onCompleted: {
        // Created while the strip comes back: it slides in from below.
        if (controller && !controller.isHide && controller.hideAnimationRunning) {
            offset = height
            follow(true)
        } else {
            follow(false)
        }
    }

    Rectangle {
        id: band
        y: strip.offset
        width: strip.width
        height: strip.height
        color: Theme.cardBackground

        Rectangle {
            width: parent.width
            height: strip.look ? strip.look.topLineWidth : 0
            color: strip.look ? strip.look.topLineColor : "transparent"
        }

        Repeater {
            model: strip.controller ? strip.controller.buttons : []
            delegate: Item {
                id: tabButton
                required property ICTabBarItem modelData
                x: modelData.frame.x
                width: modelData.frame.width
                height: modelData.frame.height
                objectName: "tabButton" + modelData.tag

                Image {
                    x: tabButton.modelData.imageRect.x
                    y: tabButton.modelData.imageRect.y
                    width: tabButton.modelData.imageRect.width
                    height: tabButton.modelData.imageRect.height
                    source: Assets.imageUrl(tabButton.modelData.currentImageName)
                    sourceSize: Qt.size(width * 2, height * 2)
                    fillMode: Image.PreserveAspectFit
                }
                Text {
                    x: tabButton.modelData.titleRect.x
                    y: tabButton.modelData.titleRect.y
                    width: tabButton.modelData.titleRect.width
                    height: tabButton.modelData.titleRect.height
                    visible: text.length > 0
                    text: tabButton.modelData.currentTitle
                    color: tabButton.modelData.currentTitleColor
                    font.pixelSize: tabButton.modelData.titleFontSize
                    font.family: Theme.fontFamily
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
                MouseArea {
                    anchors.fill: parent
                    onClicked: tabButton.modelData.tap()
                }
            }
        }

        Rectangle {
            id: badgeDot
            objectName: "cartBadge"
            visible: strip.look !== null && strip.badge !== null && !strip.badge.hidden
                     && strip.badge.text.length > 0
            x: strip.look ? strip.look.badgeRect.x : 0
            y: strip.look ? strip.look.badgeRect.y : 0
            width: strip.look ? strip.look.badgeRect.width : 15
            height: width
            radius: width / 2
            color: Theme.badge

            Text {
                anchors.centerIn: parent
                text: strip.badge ? strip.badge.text : ""
                color: Theme.textOnDark
                font.pixelSize: Theme.fontMicro
                font.family: Theme.fontFamily
                font.weight: Font.DemiBold
            }
        }
    }
}
