import QtQuick
import QtQuick.Controls
import Tarvel

// A switch showing a SwitchState. A user's flip goes through the state (which tells the
// controller); flips from code only move the knob.
Switch {
    id: control
    property SwitchState state: null
    property color onColor: Theme.success

    enabled: state !== null && state.enabled
    checked: state !== null && state.on
    opacity: enabled ? 1 : 0.5
    padding: 0
    implicitWidth: indicator.implicitWidth
    implicitHeight: indicator.implicitHeight

    indicator: Rectangle {
        implicitWidth: 51
        implicitHeight: 31
        x: control.leftPadding
        y: (control.height - height) / 2
        radius: height / 2
        color: control.checked ? control.onColor : Theme.switchTrackOff
        Behavior on color {
            ColorAnimation { duration: 150 }
        }

        Rectangle {
            width: 27
            height: 27
            radius: height / 2
            y: 2
            x: control.checked ? parent.width - width - 2 : 2
            color: Theme.cardBackground
            border.color: Theme.controlBorder
            Behavior on x {
                NumberAnimation { duration: 150 }
            }
        }
    }
    contentItem: Item {}

    onToggled: {
        if (state)
            state.toggleByUser(checked)
        // The user's flip replaced the binding; the state has the last word again.
        checked = Qt.binding(() => state !== null && state.on)
    }
}
