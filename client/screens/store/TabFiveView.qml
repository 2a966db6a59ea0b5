import QtQuick
import Tarvel

// The news list.
Item {
    id: view
    property TabFiveViewController controller: null

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    ListView {
        id: list
        objectName: "newsList"
        anchors.fill: parent
        clip: true
        model: view.controller ? view.controller.mainTable : null
        delegate: Item {
            id: slot
            required property int index
            required property var row
            width: list.width
            height: row.height

            NewsTableViewCell {
                anchors.fill: parent
                row: slot.row
                onTapped: view.controller.didSelectRowAtIndex(slot.index)
            }
        }
        footer: LoadMoreFooter {
            target: list
            footer: view.controller ? view.controller.refreshFooter : null
        }
    }

    RefreshHeader {
        anchors.left: list.left
        anchors.right: list.right
        anchors.top: list.top
        target: list
        header: view.controller ? view.controller.refreshHeader : null
    }
}
