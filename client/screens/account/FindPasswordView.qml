import QtQuick
import QtQuick.Controls
import Tarvel

// The choice between recovering (or unlocking) by mobile number and by e-mail: two outlined
// buttons over the background picture.
Item {
    id: view
    property var controller: null
    readonly property bool laidOut: controller !== null && controller.backgroundImage.length > 0

    AccountBackground {
        anchors.fill: parent
        imageName: view.controller ? view.controller.backgroundImage : ""
    }

    Column {
        visible: view.laidOut
        anchors.horizontalCenter: parent.horizontalCenter
        y: Theme.navigationBarHeight + 60
        width: parent.width - 2 * 30
        spacing: Theme.spacingXLarge

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: view.controller && view.controller.viewType === 1
                  ? "账号已被锁定，请选择解锁方式" : "请选择找回密码的方式"
            color: Theme.textOnDarkSecondary
            font.pixelSize: Theme.fontCallout
        }
        AccountButton {
            objectName: "buttonMobile"
            width: parent.width
            bordered: true
            state: view.controller ? view.controller.buttonMobile : null
        }
        AccountButton {
            objectName: "buttonEmail"
            width: parent.width
            bordered: true
            state: view.controller ? view.controller.buttonEmail : null
        }
    }
}
