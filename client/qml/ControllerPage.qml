import QtQuick
import Tarvel

// One screen: the navigation bar (inside a navigation stack) over the controller's view. The view
// file named by `viewSource` gets the controller in its `controller` property. A screen base
// paints the page in its own background colour.
//
// Ending editing: a touch on the page's background (one that nothing in the view takes: not a
// field, button or row) ends editing, so the keyboard focus leaves the text field. A row or any
// other part of a view that should not end editing says so by taking the touch itself (a
// MouseArea or a control); lists take their touches for scrolling.
Rectangle {
    id: page
    property ViewController controller: null
    readonly property bool showsNavigationBar: controller !== null
                                               && controller.navigationController !== null
                                               && !controller.navigationBarHidden
    readonly property bool contentUnderBar: !showsNavigationBar
                                            || (controller !== null && controller.navigationBarTransparent)

    color: controller && controller.backgroundColor !== undefined ? controller.backgroundColor
                                                                 : Theme.pageBackground

    MouseArea {
        objectName: "pageBackground"
        anchors.fill: parent
        onPressed: page.endEditing()
    }

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

    function endEditing() {
        if (controller && typeof controller.setEndEdingAction === "function")
            controller.setEndEdingAction()
        else
            page.forceActiveFocus()
    }

    onControllerChanged: loadView()
    Connections {
        target: page.controller
        function onViewSourceChanged() { page.loadView() }
        function onEndEditingRequested() { page.forceActiveFocus() }
        ignoreUnknownSignals: true
    }
}
