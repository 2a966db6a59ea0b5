import QtQuick
import QtQuick.Controls
import Tarvel

// A navigation stack on screen: one page per controller, following the controller's pushes and
// pops with the usual slides, and telling it when each slide is over.
StackView {
    id: stack
    objectName: "controllerStack"
    property NavigationController navigationController: null
    // True while the stack itself reacts to the controller, so that transitions StackView cuts
    // short on the way are not taken for the end of the new one.
    property bool following: false

    clip: true

    Component {
        id: pageComponent
        ControllerPage {}
    }

    function operation(animated, kind) {
        return animated ? kind : StackView.Immediate
    }

    function settle() {
        if (!following && !busy && navigationController)
            navigationController.finishTransition()
    }

    function rebuild(animated) {
        following = true
        clear(StackView.Immediate)
        if (navigationController) {
            const depth = navigationController.depth
            for (let i = 0; i < depth; ++i) {
                const last = i === depth - 1
                push(pageComponent, { controller: navigationController.viewControllerAt(i) },
                     operation(animated && last, StackView.ReplaceTransition))
            }
        }
        following = false
        settle()
    }

    Connections {
        target: stack.navigationController
        function onPushed(controller, animated) {
            stack.following = true
            stack.push(pageComponent, { controller: controller },
                       stack.operation(animated, StackView.PushTransition))
            stack.following = false
            stack.settle()
        }
        function onPopped(depth, animated) {
            stack.following = true
            stack.pop(stack.get(depth - 1, StackView.ForceLoad),
                      stack.operation(animated, StackView.PopTransition))
            stack.following = false
            stack.settle()
        }
        function onReset(animated) {
            stack.rebuild(animated)
        }
    }

    // The controller this stack currently draws for; it waits for this stack's slides.
    property NavigationController drivenController: null

    function drive(controller) {
        if (drivenController && drivenController !== controller)
            drivenController.transitionsDrivenByView = false
        drivenController = controller
        if (controller)
            controller.transitionsDrivenByView = true
    }

    onBusyChanged: settle()
    onNavigationControllerChanged: {
        drive(navigationController)
        rebuild(false)
    }
    Component.onDestruction: drive(null)
}
