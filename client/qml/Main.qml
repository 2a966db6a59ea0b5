import QtQuick
import QtQuick.Controls
import QtQuick.Window
import Tarvel

// The app's phone-sized window: whatever the application delegate's window holds (the tab bar
// after launch), the presented sheets, alerts, action sheets and the HUD, with the main tab strip
// drawn under tab bar roots.
ApplicationWindow {
    id: appWindow
    width: 375
    height: 667
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    title: "Tarvel"
    color: Theme.cardBackground
    font.family: Theme.fontFamily

    WindowView {
        id: windowView
        anchors.fill: parent
        window: AppDelegate.window
        tabBar: TabStrip {}
    }
}
