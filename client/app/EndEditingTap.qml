import QtQuick
import Tarvel

// The screens' end-editing tap: a touch that lands outside a text field asks the screen in front
// whether it takes the tap (it does not on text fields, inside list rows, or on the screens whose
// rows take taps) and, if so, ends editing: the keyboard focus leaves the text field. The touch
// itself goes on to whatever lies under it.
MouseArea {
    id: catcher
    // What the window shows; touches are looked up in it.
    property Item content: null

    z: 1000
    acceptedButtons: Qt.LeftButton

    onPressed: mouse => {
        mouse.accepted = false
        catcher.endEditingFor(catcher.hitAt(mouse.x, mouse.y))
    }

    function endEditingFor(touched) {
        const screen = AppDelegate.visibleViewController()
        if (!screen || typeof screen.shouldReceiveEndEditingTap !== "function")
            return
        if (!screen.shouldReceiveEndEditingTap(isInTextField(touched), isInListRow(touched)))
            return
        screen.setEndEdingAction()
        const focused = Window.activeFocusItem
        if (focused && isTextField(focused))
            focused.focus = false
    }

    function isTextField(item) {
        return item !== null && item.echoMode !== undefined && item.cursorPosition !== undefined
    }

    // On the field itself or on one of its parts (placeholder, clear button).
    function isInTextField(item) {
        for (let p = item; p; p = p.parent) {
            if (isTextField(p))
                return true
        }
        return false
    }

    // A delegate of a list or grid sits in the view's content item.
    function isInListRow(item) {
        for (let p = item; p && p.parent; p = p.parent) {
            const view = p.parent.parent
            if (view && view.delegate !== undefined && view.contentItem === p.parent)
                return true
        }
        return false
    }

    // Something a user sees or touches: not a bare container.
    function isSolid(item) {
        if (item.echoMode !== undefined || item.pressed !== undefined)
            return true
        if (item.sourceComponent !== undefined)
            return false
        if (item.color !== undefined && item.color.a > 0)
            return true
        return item.source !== undefined || item.text !== undefined
    }

    // The front-most solid item under the point (in `item`'s coordinates), or null.
    function hitIn(item, x, y) {
        if (!item.visible || item === catcher)
            return null
        if (x < 0 || y < 0 || x >= item.width || y >= item.height) {
            if (item.clip)
                return null
        }
        const children = Array.from(item.children).sort((a, b) => a.z - b.z)
        for (let i = children.length - 1; i >= 0; --i) {
            const child = children[i]
            const local = item.mapToItem(child, x, y)
            const hit = hitIn(child, local.x, local.y)
            if (hit)
                return hit
        }
        const inside = x >= 0 && y >= 0 && x < item.width && y < item.height
        return inside && isSolid(item) ? item : null
    }

    function hitAt(x, y) {
        if (!content)
            return null
        const local = mapToItem(content, x, y)
        return hitIn(content, local.x, local.y)
    }
}
