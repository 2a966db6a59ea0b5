import QtQuick
import Tarvel

// One screen: the navigation bar (inside a navigation stack) over the controller's view. The view
// file named by `viewSource` gets the controller in its `controller` property.
Rectangle {
    id: page
    property ViewController controller: null
    readonly property bool showsNavigationBar: controller !== null
                                               && controller.navigationController !== null
                                               && !controller.navigationBarHidden
    readonly property bool contentUnderBar: !showsNavigationBar
                                            || (controller !== null && controller.navigationBarTransparent)

    color: Theme.pageBackground

    Loader {
        id: content
        anchors.fill: parent
        anchors.topMargin: page.contentUnderBar ? 0 : bar.height
    }

    NavigationBar {
        id: bar
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        visible: page.showsNavigationBar
        controller: page.controller
    }

    function loadView() {
        if (!controller) {
            content.source = ""
            return
        }
        controller.loadViewIfNeeded()
        const source = controller.viewSource.toString()
        content.setSource(source.length > 0 ? source : "PlaceholderPage.qml",
                          { controller: controller })
    }

    onControllerChanged: loadView()
    Connections {
        target: page.controller
        function onViewSourceChanged() { page.loadView() }
    }
}
