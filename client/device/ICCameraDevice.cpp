#include "device/ICCameraDevice.h"

#include <QImage>
#include <QObject>
#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>
#include <optional>

// Qt Multimedia brings a dozen sound and codec libraries with it, so the app does not link it:
// the camera sheet's QML loads it when the sheet is first shown, and the two questions asked here
// go through QML and the meta-object system, loading it only then.

namespace ICCameraDevice {

namespace {

bool askMediaDevices()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\n"
                      "import QtMultimedia\n"
                      "Item {\n"
                      "    MediaDevices { id: devices }\n"
                      "    readonly property bool available: devices.videoInputs.length > 0\n"
                      "}\n",
                      QUrl());
    const std::unique_ptr<QObject> probe(component.create());
    return probe && probe->property("available").toBool();
}

// Hands the one picture an image capture reports to its receiver, then goes.
class CaptureReceiver : public QObject
{
    Q_OBJECT
public:
    CaptureReceiver(QObject *context, std::function<void(const QImage &image)> captured)
        : QObject(context)
        , m_captured(std::move(captured))
    { }

public slots:
    void imageCaptured(int id, const QImage &image)
    {
        Q_UNUSED(id)
        if (m_captured)
            std::exchange(m_captured, {})(image);
        deleteLater();
    }

private:
    std::function<void(const QImage &image)> m_captured;
};

} // namespace

bool isAvailable()
{
    // The machine's cameras do not come and go while the app runs here; ask once.
    static const bool available = askMediaDevices();
    return available;
}

bool captureOnce(QObject *imageCapture, QObject *context,
                 std::function<void(const QImage &image)> captured)
{
    if (!imageCapture || !imageCapture->inherits("QImageCapture"))
        return false;
    auto *receiver = new CaptureReceiver(context, std::move(captured));
    QObject::connect(imageCapture, SIGNAL(imageCaptured(int, QImage)), receiver,
                     SLOT(imageCaptured(int, QImage)));
    QObject::connect(imageCapture, &QObject::destroyed, receiver, &QObject::deleteLater);
    return QMetaObject::invokeMethod(imageCapture, "capture");
}

} // namespace ICCameraDevice

#include "ICCameraDevice.moc"
