import QtQuick
import Tarvel

// The wide button that completes a security form.
BoundButton {
    width: parent ? parent.width - 2 * Theme.spacingLarge : 0
    x: Theme.spacingLarge
    height: Theme.buttonHeight
    background: Rectangle {
        radius: Theme.buttonHeight / 2
        color: Theme.accent
    }
}
