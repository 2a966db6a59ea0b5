pragma Singleton
import QtQuick

// Colours and type used across the app.
QtObject {
    readonly property color navigationBar: Qt.rgba(60 / 255, 102 / 255, 183 / 255, 1)
    readonly property color navigationTitle: "white"
    readonly property color barItemTitle: Qt.rgba(110 / 255, 185 / 255, 43 / 255, 1)
    readonly property color background: "#efeff4"
    readonly property color pageBackground: Qt.rgba(210 / 255, 210 / 255, 210 / 255, 1)
    readonly property color textPrimary: "#222222"
    readonly property color textSecondary: "#888888"
    readonly property color textPlaceholder: "#b4b4b4"
    readonly property color price: "#e4393c"
    readonly property color separator: "#dddddd"
    readonly property color accent: Qt.rgba(249 / 255, 145 / 255, 45 / 255, 1)
    readonly property color link: "#007aff"
    readonly property color destructive: "#ff3b30"
    readonly property color hudBackground: Qt.rgba(0, 0, 0, 0.78)
    readonly property color mask: Qt.rgba(0, 0, 0, 0.4)
    readonly property color sheetBackground: "#f7f7f7"
    readonly property color imagePlaceholder: "#e6e6ea"
    readonly property string fontFamily: "Noto Sans CJK SC"

    readonly property int statusBarHeight: 20
    readonly property int navigationBarHeight: 64
    readonly property int tabBarHeight: 49
}
