import QtQuick
import QtQuick.Controls
import Tarvel

// The square-crop editor: the picture under a square frame as wide as the screen, moved with a
// finger or the mouse and zoomed with two fingers, the wheel or the slider; "重选" goes back to
// choosing, "选取" takes the square.
Rectangle {
    id: sheet
    property var controller: null
    readonly property var cropper: controller ? controller.cropper : null

    color: Theme.photoEditorBackground
    clip: true

    Item {
        id: frame
        objectName: "cropFrame"
        width: sheet.width
        height: width
        y: Math.round((sheet.height - height) / 2) - 20
        Component.onCompleted: if (sheet.cropper) sheet.cropper.frameSide = width
        onWidthChanged: if (sheet.cropper) sheet.cropper.frameSide = width

        Image {
            objectName: "cropPicture"
            x: sheet.cropper ? sheet.cropper.imageX : 0
            y: sheet.cropper ? sheet.cropper.imageY : 0
            width: sheet.cropper ? sheet.cropper.imageWidth : 0
            height: sheet.cropper ? sheet.cropper.imageHeight : 0
            source: sheet.controller ? sheet.controller.pictureUrl : ""
            sourceSize: Qt.size(2048, 2048)
            asynchronous: true
            smooth: true
        }
    }

    // Everything outside the frame is veiled.
    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: frame.top
        color: Theme.photoEditorVeil
    }
    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: frame.bottom
        anchors.bottom: parent.bottom
        color: Theme.photoEditorVeil
    }
    Rectangle {
        anchors.fill: frame
        color: "transparent"
        border.width: Theme.hairlineWidth
        border.color: Theme.textOnDark
    }

    MouseArea {
        id: touch
        anchors.fill: parent
        property point last
        onPressed: mouse => last = Qt.point(mouse.x, mouse.y)
        onPositionChanged: mouse => {
            sheet.cropper.moveBy(mouse.x - last.x, mouse.y - last.y)
            last = Qt.point(mouse.x, mouse.y)
        }
        onWheel: wheel => sheet.cropper.zoomBy(Math.pow(1.0015, wheel.angleDelta.y),
                                               wheel.x - frame.x, wheel.y - frame.y)
    }
    PinchHandler {
        id: pinch
        target: null
        property real lastScale: 1
        onActiveChanged: lastScale = 1
        onActiveScaleChanged: {
            const centre = frame.mapFromItem(sheet, centroid.position.x, centroid.position.y)
            sheet.cropper.zoomBy(activeScale / lastScale, centre.x, centre.y)
            lastScale = activeScale
        }
    }

    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        y: Theme.statusBarHeight + Theme.spacingLarge
        text: "移动和缩放"
        color: Theme.textOnDark
        font.pixelSize: Theme.fontTitle3
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: frame.bottom
        anchors.topMargin: Theme.spacingXLarge
        spacing: Theme.spacingRegular
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: "－"
            color: Theme.textOnDarkSecondary
            font.pixelSize: Theme.fontTitle3
        }
        Slider {
            id: zoomSlider
            objectName: "zoomSlider"
            width: sheet.width - 120
            from: 1
            to: sheet.cropper ? sheet.cropper.maximumZoom : 1
            value: sheet.cropper ? sheet.cropper.zoom : 1
            onMoved: sheet.cropper.zoom = value
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: "＋"
            color: Theme.textOnDarkSecondary
            font.pixelSize: Theme.fontTitle3
        }
    }

    Item {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 72
        Text {
            objectName: "retakeButton"
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacingXLarge
            anchors.verticalCenter: parent.verticalCenter
            text: "重选"
            color: Theme.textOnDark
            font.pixelSize: Theme.fontTitle3
            MouseArea {
                anchors.fill: parent
                anchors.margins: -Theme.spacingRegular
                onClicked: sheet.controller.retake()
            }
        }
        Text {
            objectName: "useButton"
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacingXLarge
            anchors.verticalCenter: parent.verticalCenter
            text: "选取"
            color: Theme.textOnDark
            font.pixelSize: Theme.fontTitle3
            font.weight: Font.Medium
            MouseArea {
                anchors.fill: parent
                anchors.margins: -Theme.spacingRegular
                onClicked: sheet.controller.usePhoto()
            }
        }
    }
}
