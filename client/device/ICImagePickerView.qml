import QtQuick
import QtQuick.Dialogs
import Tarvel

// The picture picker: first the file chooser over the pictures folder (or the camera's
// viewfinder), then the square-crop sheet.
Rectangle {
    id: view
    property var controller: null
    readonly property bool choosing: controller !== null && controller.stage === ICImagePickerController.Choosing
    readonly property bool fromCamera: controller !== null
                                       && controller.sourceType === ICImagePickerController.SourceTypeCamera

    color: Theme.sheetBackground

    // While the chooser is up: what this sheet is for, and a way back into the chooser.
    Column {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.spacingXLarge
        spacing: Theme.spacingLarge
        visible: view.choosing && !view.fromCamera
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "选择一张照片作为头像"
            color: Theme.textPrimary
            font.pixelSize: Theme.fontHeadline
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "支持 JPEG、PNG 图片"
            color: Theme.textSecondary
            font.pixelSize: Theme.fontFootnote
        }
        Rectangle {
            objectName: "reopenChooser"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 160
            height: Theme.buttonHeight
            radius: height / 2
            color: Theme.accent
            Text {
                anchors.centerIn: parent
                text: "打开图片文件夹"
                color: Theme.textOnDark
                font.pixelSize: Theme.fontBody
            }
            MouseArea {
                anchors.fill: parent
                onClicked: chooser.open()
            }
        }
        Text {
            objectName: "cancelChoosing"
            anchors.horizontalCenter: parent.horizontalCenter
            text: "取消"
            color: Theme.link
            font.pixelSize: Theme.fontBody
            MouseArea {
                anchors.fill: parent
                anchors.margins: -Theme.spacingMedium
                onClicked: view.controller.cancel()
            }
        }
    }

    FileDialog {
        id: chooser
        title: "选择照片"
        currentFolder: view.controller ? view.controller.picturesFolder : ""
        nameFilters: ["图片 (*.jpg *.jpeg *.png *.bmp *.gif *.webp)"]
        fileMode: FileDialog.OpenFile
        onAccepted: view.controller.didChooseFile(selectedFile)
        onRejected: if (view.choosing) view.controller.cancel()
    }

    Loader {
        anchors.fill: parent
        active: view.choosing && view.fromCamera
        source: "ICCameraSheet.qml"
        onLoaded: item.controller = view.controller
    }

    Loader {
        anchors.fill: parent
        active: view.controller !== null && !view.choosing
        sourceComponent: ICSquareCropSheet {
            controller: view.controller
        }
    }

    function openChooserWhenChoosing() {
        if (view.choosing && !view.fromCamera)
            chooser.open()
        else
            chooser.close()
    }
    onChoosingChanged: openChooserWhenChoosing()
    Component.onCompleted: openChooserWhenChoosing()
}
