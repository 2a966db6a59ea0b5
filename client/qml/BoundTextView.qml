import QtQuick
import QtQuick.Controls
import Tarvel

// A multi-line text area editing a TextViewState; the user's typing goes back into the state.
TextArea {
    id: area
    property TextViewState state: null

    visible: state !== null && !state.hidden
    readOnly: state === null || !state.editable
    text: state ? state.text : ""
    placeholderText: state ? state.placeholder : ""
    placeholderTextColor: Theme.textPlaceholder
    color: Theme.textPrimary
    font.pixelSize: Theme.fontBody
    wrapMode: TextEdit.Wrap
    background: Rectangle {
        color: area.readOnly ? Theme.background : Theme.cardBackground
        border.color: area.activeFocus ? Theme.navigationBar : Theme.separator
        radius: 2
    }

    onTextChanged: if (state && state.text !== text) state.text = text
}
