pragma Singleton
import QtQuick

// Colours and type used across the app.
QtObject {
    readonly property color navigationBar: Qt.rgba(60 / 255, 102 / 255, 183 / 255, 1)
    readonly property color background: "#efeff4"
    readonly property color textPrimary: "#222222"
    readonly property color textSecondary: "#888888"
    readonly property color price: "#e4393c"
    readonly property color separator: "#dddddd"
    readonly property string fontFamily: "Noto Sans CJK SC"
}
