import QtQuick
import QtMultimedia
import Tarvel

// The default camera's viewfinder with its shutter and "取消".
Rectangle {
    id: sheet
    property var controller: null

    color: Theme.photoEditorBackground

    CaptureSession {
        camera: Camera {
            active: true
        }
        imageCapture: ImageCapture {
            id: capture
        }
        videoOutput: viewfinder
    }
    VideoOutput {
        id: viewfinder
        anchors.fill: parent
        fillMode: VideoOutput.PreserveAspectCrop
    }

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 96
        color: Theme.hudBackground
        Text {
            anchors.left: parent.left
            anchors.leftMargin: Theme.spacingXLarge
            anchors.verticalCenter: parent.verticalCenter
            text: "取消"
            color: Theme.textOnDark
            font.pixelSize: Theme.fontTitle3
            MouseArea {
                anchors.fill: parent
                anchors.margins: -Theme.spacingMedium
                onClicked: sheet.controller.cancel()
            }
        }
        Rectangle {
            objectName: "shutter"
            anchors.centerIn: parent
            width: 64
            height: 64
            radius: 32
            color: Theme.cardBackground
            border.width: 4
            border.color: Theme.separator
            enabled: capture.readyForCapture
            opacity: enabled ? 1 : 0.5
            MouseArea {
                anchors.fill: parent
                onClicked: sheet.controller.captureWith(capture)
            }
        }
    }
}
