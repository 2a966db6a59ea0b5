#include "device/ICCameraDevice.h"

#include <QCameraDevice>
#include <QImageCapture>
#include <QMediaDevices>

namespace ICCameraDevice {

bool isAvailable()
{
    return !QMediaDevices::defaultVideoInput().isNull();
}

bool captureOnce(QObject *imageCapture, QObject *context,
                 std::function<void(const QImage &image)> captured)
{
    auto *capture = qobject_cast<QImageCapture *>(imageCapture);
    if (!capture)
        return false;
    QObject::connect(
            capture, &QImageCapture::imageCaptured, context,
            [captured = std::move(captured)](int, const QImage &image) { captured(image); },
            Qt::SingleShotConnection);
    capture->capture();
    return true;
}

} // namespace ICCameraDevice
