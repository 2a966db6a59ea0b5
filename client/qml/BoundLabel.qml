import QtQuick
import QtQuick.Controls
import Tarvel

// A label showing a LabelState (text, colours, hidden).
Label {
    id: label
    property LabelState state: null

    visible: state !== null && !state.hidden
    text: state ? state.text : ""
    color: state ? state.textColor : Theme.textPrimary
    background: Rectangle {
        color: label.state ? label.state.backgroundColor : "transparent"
        radius: Math.min(width, height) / 2 * label.badgeRoundness
    }
    // 1 draws the background as a pill or circle (badges), 0 as a plain box.
    property real badgeRoundness: 0
    font.pixelSize: Theme.fontCallout
}
