import QtQuick
import QtQuick.Layouts
import Tarvel

// The tabs of a tab bar controller, one shown at a time, over an optional tab strip the app draws
// (`tabBar`). The strip gives way when the controller hides it or a pushed screen asks for it.
Item {
    id: container
    property TabBarController tabBarController: null
    property Component tabBar: null
    readonly property ViewController selectedTab: tabBarController ? tabBarController.selectedViewController : null
    readonly property bool tabBarShown: tabBar !== null && tabBarController !== null
                                        && !tabBarController.tabBarHidden
                                        && !(selectedTab && selectedTab.kind === ViewController.Navigation
                                             && selectedTab.bottomBarHidden)

    property var tabs: []

    function reloadTabs() {
        const list = []
        for (let i = 0; tabBarController && i < tabBarController.count; ++i)
            list.push(tabBarController.viewControllerAt(i))
        tabs = list
    }

    onTabBarControllerChanged: reloadTabs()
    Connections {
        target: container.tabBarController
        function onViewControllersChanged() { container.reloadTabs() }
    }

    StackLayout {
        anchors.fill: parent
        anchors.bottomMargin: container.tabBarShown ? Theme.tabBarHeight : 0
        currentIndex: container.tabBarController ? container.tabBarController.selectedIndex : -1

        Repeater {
            model: container.tabs
            // A tab's view is made when the tab is first shown and kept from then on, so a launch
            // draws only the selected tab. By address, not by type: a tab shows a controller view,
            // which may show tabs.
            Loader {
                required property var modelData
                required property int index
                readonly property bool selected: container.tabBarController !== null
                                                 && container.tabBarController.selectedIndex === index

                function loadWhenShown() {
                    if (selected && status === Loader.Null)
                        setSource("ControllerView.qml", { controller: modelData })
                }
                onSelectedChanged: loadWhenShown()
                Component.onCompleted: loadWhenShown()
            }
        }
    }

    Loader {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: Theme.tabBarHeight
        active: container.tabBarShown
        sourceComponent: container.tabBar
    }
}
