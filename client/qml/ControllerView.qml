import QtQuick
import Tarvel

// Shows any controller the way its kind asks: a navigation stack, tabs, or a single page.
Item {
    id: view
    property ViewController controller: null
    // The tab strip to draw when the controller has tabs.
    property Component tabBar: null

    Loader {
        anchors.fill: parent
        sourceComponent: {
            if (!view.controller)
                return null
            switch (view.controller.kind) {
            case ViewController.Navigation:
                return stackComponent
            case ViewController.TabBar:
                return tabsComponent
            default:
                return pageComponent
            }
        }
    }

    Component {
        id: stackComponent
        ControllerStack { navigationController: view.controller }
    }
    Component {
        id: tabsComponent
        TabContainer {
            tabBarController: view.controller
            tabBar: view.tabBar
        }
    }
    Component {
        id: pageComponent
        ControllerPage { controller: view.controller }
    }
}
