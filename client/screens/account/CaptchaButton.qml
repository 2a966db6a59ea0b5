import QtQuick
import Tarvel

// The captcha picture held by an ImageCodeButton, drawn as the button's background; a tap renews
// it. Until the first picture arrives the button says what a tap does.
BoundButton {
    id: button
    property ImageCodeButton captcha: null

    state: captcha
    implicitWidth: 96
    implicitHeight: 36
    background: Rectangle {
        radius: Theme.radiusSmall
        color: Theme.textOnDarkSelection
        border.color: Theme.lineOnDark
        border.width: Theme.hairlineWidth
        clip: true
        Image {
            objectName: "imageCodePicture"
            anchors.fill: parent
            anchors.margins: Theme.hairlineWidth
            source: button.captcha ? button.captcha.backgroundImageUrl : ""
            fillMode: Image.Stretch
            cache: false
        }
        Text {
            anchors.centerIn: parent
            visible: !button.captcha || button.captcha.backgroundImageUrl.toString().length === 0
            text: "点击获取"
            color: Theme.textOnDarkSecondary
            font.pixelSize: Theme.fontFootnote
        }
    }
}
