import QtQuick
import Tarvel

// The "已拥有" mark of a game the signed-in user owns: a small green pill with a tick. `outlined`
// gives it a light edge where it sits on a picture.
Rectangle {
    id: badge
    property bool outlined: false
    property int pixelSize: Theme.fontCaption

    objectName: "ownedBadge"
    implicitWidth: content.implicitWidth + 2 * Theme.spacingMedium
    implicitHeight: Math.max(20, content.implicitHeight + Theme.spacingSmall)
    width: implicitWidth
    height: implicitHeight
    radius: height / 2
    color: Theme.owned
    border.width: outlined ? Theme.hairlineWidth : 0
    border.color: Theme.ownedOutline

    Row {
        id: content
        anchors.centerIn: parent
        spacing: Theme.spacingTiny

        // A tick drawn with two strokes, so it needs no font glyph.
        Canvas {
            id: tick
            anchors.verticalCenter: parent.verticalCenter
            width: badge.pixelSize * 0.9
            height: width
            onPaint: {
                const ctx = getContext("2d");
                ctx.reset();
                ctx.strokeStyle = Theme.textOnDark;
                ctx.lineWidth = Math.max(1.5, width / 6);
                ctx.lineCap = "round";
                ctx.lineJoin = "round";
                ctx.beginPath();
                ctx.moveTo(width * 0.15, height * 0.55);
                ctx.lineTo(width * 0.42, height * 0.8);
                ctx.lineTo(width * 0.88, height * 0.25);
                ctx.stroke();
            }
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: "已拥有"
            color: Theme.textOnDark
            font.pixelSize: badge.pixelSize
            font.weight: Font.DemiBold
        }
    }
}
