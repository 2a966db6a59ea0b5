import QtQuick
import Tarvel

// The window's presented controllers, each a full-screen sheet sliding up over everything below
// it and sliding down when dismissed. Tells the window when each slide is over.
Item {
    id: modalLayer
    objectName: "modalLayer"
    property PlatformWindow window: null
    property int slideDuration: 300
    // Sheets from bottom to top, one per presented controller.
    property var sheets: []
    // True while the layer itself reacts to the window, so that slides it cuts short on the way
    // are not taken for the end of the new one.
    property bool following: false

    Component {
        id: sheetComponent
        Rectangle {
            id: sheet
            property ViewController controller: null
            property bool leaving: false
            signal slideFinished()

            width: modalLayer.width
            height: modalLayer.height
            color: controller && controller.backgroundColor !== undefined ? controller.backgroundColor
                                                                         : Theme.pageBackground

            ControllerView {
                anchors.fill: parent
                controller: sheet.controller
            }
            // Nothing below a sheet takes touches.
            MouseArea {
                anchors.fill: parent
                z: -1
            }
            NumberAnimation on y {
                id: slide
                running: false
                duration: modalLayer.slideDuration
                easing.type: Easing.OutCubic
                onStopped: sheet.slideFinished()
            }
            function slideTo(target, animated) {
                slide.stop()
                if (!animated) {
                    y = target
                    return false
                }
                slide.from = y
                slide.to = target
                slide.start()
                return true
            }
            function finishNow() {
                if (slide.running)
                    slide.complete()
            }
        }
    }

    function finishRunningSlides() {
        following = true
        for (const sheet of sheets)
            sheet.finishNow()
        following = false
    }

    function reportFinished() {
        if (!following && window)
            window.finishTransition()
    }

    function addSheet(controller, animated) {
        const sheet = sheetComponent.createObject(modalLayer, { controller: controller, y: animated ? modalLayer.height : 0 })
        sheet.slideFinished.connect(modalLayer.reportFinished)
        sheets = sheets.concat([sheet])
        if (!sheet.slideTo(0, animated))
            reportFinished()
    }

    function removeSheets(index, animated) {
        const leaving = sheets.slice(index)
        sheets = sheets.slice(0, index)
        if (leaving.length === 0)
            return
        const top = leaving[leaving.length - 1]
        // Only the top one is seen sliding away; those under it go with it.
        for (const sheet of leaving) {
            if (sheet !== top)
                sheet.visible = false
        }
        top.slideFinished.disconnect(modalLayer.reportFinished)
        top.slideFinished.connect(function() {
            for (const sheet of leaving)
                sheet.destroy()
            modalLayer.reportFinished()
        })
        if (!top.slideTo(modalLayer.height, animated)) {
            for (const sheet of leaving)
                sheet.destroy()
            reportFinished()
        }
    }

    function rebuild() {
        for (const sheet of sheets)
            sheet.destroy()
        sheets = []
        for (let i = 0; window && i < window.presentedCount; ++i)
            addSheet(window.presentedViewControllerAt(i), false)
    }

    Connections {
        target: modalLayer.window
        function onPresented(controller, animated) {
            modalLayer.finishRunningSlides()
            modalLayer.addSheet(controller, animated)
        }
        function onDismissed(index, animated) {
            modalLayer.finishRunningSlides()
            modalLayer.removeSheets(index, animated)
        }
        function onRootViewControllerChanged() {
            modalLayer.rebuild()
        }
    }

    // The window this layer currently draws for; it waits for this layer's slides.
    property PlatformWindow drivenWindow: null

    function drive(target) {
        if (drivenWindow && drivenWindow !== target)
            drivenWindow.transitionsDrivenByView = false
        drivenWindow = target
        if (target)
            target.transitionsDrivenByView = true
    }

    onWindowChanged: {
        drive(window)
        rebuild()
    }
    Component.onDestruction: drive(null)
}
