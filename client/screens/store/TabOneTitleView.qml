import QtQuick
import QtQuick.Controls
import Tarvel

// The home page's bar: a rounded search field.
Item {
    id: root
    property TabOneViewController controller: null

    opacity: controller ? controller.titleViewAlpha : 1

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.cardBackground
        visible: root.controller !== null && !root.controller.fieldSearch.hidden

        BoundTextField {
            id: field
            anchors.fill: parent
            state: root.controller ? root.controller.fieldSearch : null
            background: Item {}
            font.pixelSize: Theme.fontCallout
            topPadding: 0
            bottomPadding: 0
            verticalAlignment: TextInput.AlignVCenter
        }
    }
}
