import QtQuick
import QtQuick.Controls
import Tarvel

// A one-line field editing a TextFieldState: the user's typing goes back into the state, and the
// state's text, placeholder, secure entry, keyboard kind and focus come to the field.
TextField {
    id: field
    property TextFieldState state: null

    visible: state !== null && !state.hidden
    enabled: state !== null && state.enabled
    text: state ? state.text : ""
    placeholderText: state ? state.placeholder : ""
    placeholderTextColor: Theme.textPlaceholder
    color: Theme.textPrimary
    font.pixelSize: Theme.fontBody
    echoMode: state && state.secureTextEntry ? TextInput.Password : TextInput.Normal
    passwordCharacter: "•"
    inputMethodHints: {
        if (!state)
            return Qt.ImhNone
        switch (state.keyboardType) {
        case TextFieldState.NumberPad: return Qt.ImhDigitsOnly
        case TextFieldState.PhonePad: return Qt.ImhDialableCharactersOnly
        case TextFieldState.DecimalPad: return Qt.ImhFormattedNumbersOnly
        case TextFieldState.EmailAddress: return Qt.ImhEmailCharactersOnly | Qt.ImhNoAutoUppercase
        case TextFieldState.Url: return Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase
        default: return Qt.ImhNone
        }
    }
    leftPadding: leftIcon.visible ? leftIcon.width + 12 : 8
    rightPadding: clearButton.visible ? clearButton.width + 4 : 8

    Image {
        id: leftIcon
        anchors.left: parent.left
        anchors.leftMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        width: 22
        height: 22
        source: field.state ? Assets.imageUrl(field.state.leftImageName) : ""
        visible: source.toString().length > 0
        fillMode: Image.PreserveAspectFit
    }
    Text {
        id: clearButton
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 28
        text: "✕"
        color: Theme.textSecondary
        horizontalAlignment: Text.AlignHCenter
        visible: field.state !== null && field.state.clearButtonShown && field.activeFocus
                 && field.text.length > 0
        MouseArea {
            anchors.fill: parent
            onClicked: field.state.text = ""
        }
    }

    onTextEdited: if (state) state.text = text
    onAccepted: if (state) state.pressReturn()
    onActiveFocusChanged: if (state) state.firstResponder = activeFocus
    Connections {
        target: field.state
        function onFirstResponderChanged() {
            if (field.state.firstResponder)
                field.forceActiveFocus()
            else if (field.activeFocus)
                field.focus = false
        }
    }
}
