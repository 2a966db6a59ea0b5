import QtQuick
import QtQuick.Controls
import Tarvel

// What a controller without a view of its own shows: its title on a plain page.
Rectangle {
    id: page
    property ViewController controller: null

    color: controller && controller.backgroundColor !== undefined ? controller.backgroundColor
                                                                 : Theme.pageBackground

    Column {
        anchors.centerIn: parent
        spacing: 8
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: page.controller && page.controller.title.length > 0 ? page.controller.title : "Tarvel"
            color: Theme.textPrimary
            font.pixelSize: Theme.fontTitle3
        }
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "页面准备中"
            color: Theme.textSecondary
            font.pixelSize: Theme.fontSubhead
        }
    }
}
