import QtQuick
import Tarvel

// The security list: one white group of three rows under the opaque bar, and a short note on
// what the bindings are for.
Rectangle {
    id: view
    property var controller: null

    color: Theme.background

    Column {
        id: table
        objectName: "tableMain"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.topMargin: Theme.spacingRegular

        Rectangle { width: parent.width; height: Theme.hairlineWidth; color: Theme.separator }
        Repeater {
            model: view.controller ? view.controller.tableMain : []
            delegate: Column {
                required property var modelData
                required property int index
                width: table.width
                AccountSafeCell {
                    objectName: "accountSafeCell" + index
                    width: parent.width
                    cellState: modelData
                }
                Rectangle {
                    x: index < 2 ? Theme.spacingLarge : 0
                    width: parent.width - x
                    height: Theme.hairlineWidth
                    color: Theme.separator
                }
            }
        }
    }

    Text {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: table.bottom
        anchors.margins: Theme.spacingLarge
        text: "绑定手机或邮箱后，可用它们登录账户和找回密码。"
        color: Theme.textSecondary
        font.pixelSize: Theme.fontFootnote
        wrapMode: Text.Wrap
    }
}
