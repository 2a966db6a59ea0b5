import QtQuick
import QtQuick.Controls
import Tarvel

// The share panel on screen: a sheet sliding up from the bottom over a dimmed backdrop, with one
// button per target and "取消". Tapping the backdrop closes it as "取消" does.
Popup {
    id: sheet
    objectName: "shareSheet"
    property ICShareView shareView: null

    parent: Overlay.overlay
    x: 0
    y: parent ? parent.height - height : 0
    width: parent ? parent.width : 0
    padding: 0
    modal: true
    dim: true
    closePolicy: Popup.CloseOnPressOutside | Popup.CloseOnEscape

    readonly property int duration: shareView ? shareView.animationDuration : 300

    Overlay.modal: Rectangle {
        color: Theme.mask
        Behavior on opacity {
            NumberAnimation { duration: sheet.duration }
        }
    }

    // The sheet slides within its place at the bottom, so its place follows its height.
    enter: Transition {
        NumberAnimation {
            target: slide
            property: "y"
            from: sheet.height
            to: 0
            duration: sheet.duration
            easing.type: Easing.OutCubic
        }
    }
    exit: Transition {
        NumberAnimation {
            target: slide
            property: "y"
            from: 0
            to: sheet.height
            duration: sheet.duration
            easing.type: Easing.InCubic
        }
    }

    background: null

    contentItem: Rectangle {
        implicitWidth: sheet.width
        implicitHeight: panel.implicitHeight
        color: Theme.sheetBackground
        transform: Translate {
            id: slide
        }

        Column {
            id: panel
            width: parent.width

            Text {
                width: parent.width
                topPadding: 18
                bottomPadding: 6
                horizontalAlignment: Text.AlignHCenter
                text: "分享到"
                color: Theme.textSecondary
                font.pixelSize: Theme.fontCallout
            }

            Flickable {
                id: scrollShare
                width: parent.width
                height: 116
                contentWidth: Math.max(width, targets.implicitWidth)
                flickableDirection: Flickable.HorizontalFlick
                boundsBehavior: Flickable.StopAtBounds
                clip: true

                Row {
                    id: targets
                    anchors.verticalCenter: parent.verticalCenter
                    x: Math.max(0, (scrollShare.width - implicitWidth) / 2)
                    spacing: 30

                    Repeater {
                        model: sheet.shareView ? sheet.shareView.arrayButtonShare : []
                        delegate: Item {
                            id: target
                            required property var modelData
                            objectName: "shareTarget" + modelData.tag
                            width: 72
                            height: 96
                            opacity: touch.pressed ? 0.6 : 1

                            Image {
                                id: picture
                                anchors.horizontalCenter: parent.horizontalCenter
                                y: 6
                                width: 56
                                height: 56
                                sourceSize: Qt.size(112, 112)
                                source: Assets.imageUrl(target.modelData.imageName)
                            }
                            Text {
                                anchors.horizontalCenter: parent.horizontalCenter
                                anchors.top: picture.bottom
                                anchors.topMargin: 9
                                text: target.modelData.title
                                color: Theme.textPrimary
                                font.pixelSize: Theme.fontSubhead
                            }
                            MouseArea {
                                id: touch
                                anchors.fill: parent
                                onClicked: target.modelData.tap()
                            }
                        }
                    }
                }
            }

            Rectangle {
                width: parent.width
                height: 8
                color: Theme.hairline
            }

            Rectangle {
                objectName: "shareCancel"
                width: parent.width
                height: 52
                color: cancelTouch.pressed ? Theme.sheetButtonPressed : Theme.cardBackground
                Text {
                    anchors.centerIn: parent
                    text: sheet.shareView ? sheet.shareView.buttonClose.title : ""
                    color: Theme.textPrimary
                    font.pixelSize: Theme.fontTitle3
                }
                MouseArea {
                    id: cancelTouch
                    anchors.fill: parent
                    onClicked: sheet.shareView.buttonClose.tap()
                }
            }
        }
    }

    // Opens and closes with the panel's state.
    readonly property bool panelShown: shareView !== null && shareView.shown
    onPanelShownChanged: panelShown ? open() : close()
    Component.onCompleted: if (panelShown) open()
    onClosed: if (shareView && shareView.shown) shareView.hideView()
}
