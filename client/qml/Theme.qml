pragma Singleton
import QtQuick
import Tarvel

// The app's whole look: colours, type scale, spacing, radii and bar heights.
// Views use these names only. Where a controller sets a look as part of its behaviour
// (the screen base's bar colour, title font and background), the view binds that property instead.
QtObject {
    // Brand and bars
    readonly property color navigationBar: ScreenLook.navBarColor
    readonly property color navigationBarDark: Qt.rgba(42 / 255, 72 / 255, 140 / 255, 1)
    readonly property color navigationBarDeep: "#1d3566"
    readonly property color navigationTitle: ScreenLook.navTitleColor

    // Surfaces
    readonly property color background: "#efeff4"
    // Pages of controllers that are not screens (screens paint their base's background).
    readonly property color pageBackground: ScreenLook.backgroundColor
    readonly property color listBackground: "#f2f2f5"
    readonly property color cardBackground: "white"
    readonly property color rowPressed: "#f4f4f6"
    readonly property color sheetBackground: "#f7f7f7"
    readonly property color sheetButtonPressed: "#e2e2e2"
    readonly property color imagePlaceholder: "#e6e6ea"
    readonly property color highlightBackground: "#fff4f4"
    readonly property color rowSelected: "#d9d9d9"
    readonly property color fieldBackground: "#f0f0f3"
    readonly property color sidePanelBackground: "#1f2d4d"
    readonly property color sidePanelText: "#aab6d3"

    // Text
    readonly property color textPrimary: "#222222"
    readonly property color textSecondary: "#888888"
    readonly property color textTertiary: "#8c8c8c"
    readonly property color textPlaceholder: "#b4b4b4"
    readonly property color textOnDark: "white"
    readonly property color textOnDarkSecondary: Qt.rgba(1, 1, 1, 0.6)
    readonly property color textOnDarkSelection: Qt.rgba(1, 1, 1, 0.35)
    readonly property color textBody: "#444444"

    // Meaning
    readonly property color price: "#e4393c"
    readonly property color badge: Qt.rgba(246 / 255, 66 / 255, 43 / 255, 1)
    readonly property color accent: Qt.rgba(249 / 255, 145 / 255, 45 / 255, 1)
    readonly property color link: "#007aff"
    readonly property color info: "#2e9bd6"
    readonly property color destructive: "#ff3b30"
    readonly property color success: "#4cd964"
    readonly property color weChatGreen: "#07c160"

    // Lines and controls
    readonly property color separator: "#dddddd"
    readonly property color hairline: "#ececf0"
    readonly property color controlBorder: "#d0d0d5"
    readonly property color switchTrackOff: "#e5e5ea"
    readonly property color lineOnDark: Qt.rgba(1, 1, 1, 0.45)
    readonly property color hudBackground: Qt.rgba(0, 0, 0, 0.78)
    readonly property color mask: Qt.rgba(0, 0, 0, 0.4)

    // Type
    readonly property string fontFamily: "Noto Sans CJK SC"
    readonly property int fontMicro: 9
    readonly property int fontCaption2: 10
    readonly property int fontCaption: 11
    readonly property int fontFootnote: 12
    readonly property int fontSubhead: 13
    readonly property int fontCallout: 14
    readonly property int fontBody: 15
    readonly property int fontHeadline: 16
    readonly property int fontTitle3: 17
    readonly property int fontTitle2: 18
    readonly property int fontTitle1: 20
    readonly property int fontLargeTitle: 22
    readonly property int fontDisplay: 40
    // The game page's notice, fact and link rows sit between Callout and Body.
    readonly property real fontDetailRow: 14.5

    // Spacing
    readonly property int spacingTiny: 2
    readonly property int spacingSmall: 4
    readonly property int spacingMedium: 8
    readonly property int spacingRegular: 12
    readonly property int spacingLarge: 16
    readonly property int spacingXLarge: 24

    // Radii
    readonly property int radiusSmall: 3
    readonly property int radiusMedium: 6
    readonly property int radiusLarge: 10

    // Heights
    readonly property int statusBarHeight: 20
    readonly property int navigationBarHeight: 64
    readonly property int tabBarHeight: 49
    readonly property int rowHeight: 44
    readonly property int buttonHeight: 44
    readonly property int bottomBarHeight: 50
    readonly property int hairlineWidth: 1

    // Picture picker: the camera's and the square-crop editor's backdrop, and the veil outside
    // the crop frame
    readonly property color photoEditorBackground: "black"
    readonly property color photoEditorVeil: Qt.rgba(0, 0, 0, 0.6)

    // The slim notice over a page shown from what was kept while the network is away
    readonly property color offlineBanner: "#fff6e5"
    readonly property color offlineBannerText: "#a8650a"
    readonly property color offlineBannerLine: "#f3dcb2"
    readonly property int offlineBannerHeight: 28

    // The "已拥有" mark on games the user owns
    readonly property color owned: "#1e9e5a"
    readonly property color ownedOutline: Qt.rgba(1, 1, 1, 0.85)
}
