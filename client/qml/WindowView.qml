import QtQuick
import Tarvel

// Everything a window shows: its root controller, the presented sheets over it, then alerts,
// action sheets and the HUD, and on top the kits' sheets that stand for other apps.
Item {
    id: windowView
    property PlatformWindow window: null
    // The tab strip drawn under a tab bar root.
    property Component tabBar: null

    ControllerView {
        anchors.fill: parent
        controller: windowView.window ? windowView.window.rootViewController : null
        tabBar: windowView.tabBar
    }
    ModalLayer {
        anchors.fill: parent
        window: windowView.window
    }
    // Alerts, action sheets, the HUD and the other apps' sheets are made once the launch's first
    // frame is out; what they show meanwhile waits in C++ and appears then.
    Loader {
        id: extras
        anchors.fill: parent
        active: false

        function makeOnceFramed() {
            if (!PlatformApplication.waitingForFirstFrame)
                active = true
        }
        Component.onCompleted: makeOnceFramed()
        Connections {
            target: PlatformApplication
            function onWaitingForFirstFrameChanged() { extras.makeOnceFramed() }
        }
        sourceComponent: Item {
            AlertDialog {
                anchors.fill: parent
            }
            ActionSheet {
                anchors.fill: parent
            }
            HudOverlay {
                anchors.fill: parent
            }
            // Other apps (WeChat) in front of this one.
            WeChatPaySheet {
                anchors.fill: parent
            }
            ShareQrSheet {
                anchors.fill: parent
            }
        }
    }
}
