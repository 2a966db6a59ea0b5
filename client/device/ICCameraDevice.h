#pragma once

#include <QImage>

#include <functional>

class QObject;

// The device's default camera, as Qt Multimedia reports it.
namespace ICCameraDevice {

// Whether the machine has a camera at all.
bool isAvailable();

// Takes one picture with `imageCapture` (the camera sheet's ImageCapture) and hands it to
// `captured` once; false when the object is no image capture.
bool captureOnce(QObject *imageCapture, QObject *context,
                 std::function<void(const QImage &image)> captured);

} // namespace ICCameraDevice
