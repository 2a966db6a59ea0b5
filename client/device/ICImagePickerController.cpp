#include "device/ICImagePickerController.h"

#include "device/ICCameraDevice.h"
#include "device/ICSquareCropper.h"
#include "platform/ui/AlertCenter.h"
#include "platform/ui/MemoryImageProvider.h"

#include <QDir>
#include <QImageReader>
#include <QPointer>
#include <QStandardPaths>

const QString ICImagePickerController::OriginalImageKey = QStringLiteral("originalImage");
const QString ICImagePickerController::CropRectKey = QStringLiteral("cropRect");

namespace {

// Pictures larger than this on their long side are read scaled down: the result is 320 x 320.
constexpr int LongestReadSide = 4096;

QImage readPicture(const QString &path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid() && std::max(size.width(), size.height()) > LongestReadSide)
        reader.setScaledSize(size.scaled(LongestReadSide, LongestReadSide, Qt::KeepAspectRatio));
    return reader.read();
}

} // namespace

ICImagePickerController::ICImagePickerController(QObject *parent)
    : platform::ViewController(parent)
    , m_cropper(new ICSquareCropper(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/device/ICImagePickerView.qml")));
    setNavigationBarHidden(true);
}

bool ICImagePickerController::isSourceTypeAvailable(SourceType sourceType)
{
    switch (sourceType) {
    case SourceTypePhotoLibrary:
    case SourceTypeSavedPhotosAlbum:
        return true;
    case SourceTypeCamera:
        return ICCameraDevice::isAvailable();
    }
    return false;
}

// The user's pictures folder, or the home folder on a machine that has none.
QUrl ICImagePickerController::picturesFolder() const
{
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QUrl::fromLocalFile(QDir(pictures).exists() ? pictures : QDir::homePath());
}

bool ICImagePickerController::didChooseFile(const QUrl &file)
{
    const QImage image = readPicture(file.isLocalFile() ? file.toLocalFile() : file.toString());
    if (image.isNull()) {
        platform::AlertCenter::shared().showAlert(QStringLiteral("无法打开这张图片"),
                                                  QStringLiteral("请换一张 JPEG 或 PNG 图片。"),
                                                  QStringLiteral("确定"), {});
        return false;
    }
    didTakePicture(image);
    return true;
}

void ICImagePickerController::captureWith(QObject *imageCapture)
{
    QPointer<ICImagePickerController> self(this);
    ICCameraDevice::captureOnce(imageCapture, this, [self](const QImage &image) {
        if (self && self->m_stage == Choosing)
            self->didTakePicture(image);
    });
}

void ICImagePickerController::didTakePicture(const QImage &image)
{
    m_originalImage = image;
    // The crop sheet shows the picture as it was read (turned upright, scaled), from memory.
    m_pictureUrl = platform::MemoryImageProvider::publish(this, QStringLiteral("original"), image);
    m_cropper->setImageSize(image.size());
    if (!m_allowsEditing)
        return finish();
    m_stage = Editing;
    emit stageChanged();
}

void ICImagePickerController::usePhoto()
{
    if (m_stage == Editing)
        finish();
}

void ICImagePickerController::retake()
{
    m_stage = Choosing;
    m_originalImage = QImage();
    m_pictureUrl = platform::MemoryImageProvider::publish(this, QStringLiteral("original"), {});
    emit stageChanged();
}

void ICImagePickerController::cancel()
{
    if (m_delegate.didCancel)
        m_delegate.didCancel(this);
}

void ICImagePickerController::finish()
{
    const QRect crop = m_allowsEditing ? m_cropper->cropRect() : m_originalImage.rect();
    if (m_delegate.didFinish)
        m_delegate.didFinish(this, {{OriginalImageKey, m_originalImage}, {CropRectKey, crop}});
}
