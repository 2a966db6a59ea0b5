import QtQuick
import Tarvel

// A picture cut to a circle (an avatar), drawn once it has loaded; nothing shows before.
Canvas {
    id: canvas
    property url source
    property url loadedSource
    readonly property bool ready: loadedSource.toString().length > 0
                                  && loadedSource.toString() === source.toString()

    onSourceChanged: {
        loadedSource = ""
        if (source.toString().length === 0) {
            requestPaint()
            return
        }
        if (isImageLoaded(source))
            loadedSource = source
        else
            loadImage(source)
        requestPaint()
    }
    onImageLoaded: {
        if (isImageLoaded(source))
            loadedSource = source
        requestPaint()
    }
    onWidthChanged: requestPaint()
    onHeightChanged: requestPaint()
    onPaint: {
        const context = getContext("2d")
        context.reset()
        if (!ready)
            return
        const side = Math.min(width, height)
        context.save()
        context.beginPath()
        context.arc(width / 2, height / 2, side / 2, 0, 2 * Math.PI)
        context.closePath()
        context.clip()
        context.drawImage(source, (width - side) / 2, (height - side) / 2, side, side)
        context.restore()
    }
}
