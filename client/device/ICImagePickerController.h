#pragma once

#include "device/ICSquareCropper.h"
#include "platform/ui/ViewController.h"

#include <QImage>
#include <QRect>
#include <QString>
#include <QUrl>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <functional>

// The picture picker, presented over the screen that wants a picture. It first lets the user take
// one (a file chooser over the pictures folder, or the default camera's viewfinder), then, when
// editing is allowed, shows the square-crop sheet. Its delegate hears the picked picture with the
// chosen square, or the user's cancel.
class ICImagePickerController : public platform::ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by ICMediaPhotoHelper")
    Q_PROPERTY(SourceType sourceType READ sourceType CONSTANT)
    Q_PROPERTY(Stage stage READ stage NOTIFY stageChanged)
    Q_PROPERTY(QUrl picturesFolder READ picturesFolder CONSTANT)
    Q_PROPERTY(QUrl pictureUrl READ pictureUrl NOTIFY stageChanged)
    Q_PROPERTY(ICSquareCropper *cropper READ cropper CONSTANT)
public:
    enum SourceType {
        SourceTypePhotoLibrary = 0,
        SourceTypeCamera = 1,
        SourceTypeSavedPhotosAlbum = 2
    };
    Q_ENUM(SourceType)
    enum Stage { Choosing, Editing };
    Q_ENUM(Stage)

    // What the picker hands over: the picture as taken and the square the user chose in it.
    static const QString OriginalImageKey; // QImage
    static const QString CropRectKey; // QRect, in the picture's pixels

    struct Delegate
    {
        std::function<void(ICImagePickerController *picker, const QVariantMap &info)> didFinish;
        std::function<void(ICImagePickerController *picker)> didCancel;
    };

    // A new picker shows the photo library.
    explicit ICImagePickerController(QObject *parent = nullptr);

    static bool isSourceTypeAvailable(SourceType sourceType);

    SourceType sourceType() const { return m_sourceType; }
    void setSourceType(SourceType sourceType) { m_sourceType = sourceType; }
    bool allowsEditing() const { return m_allowsEditing; }
    void setAllowsEditing(bool allows) { m_allowsEditing = allows; }
    void setDelegate(Delegate delegate) { m_delegate = std::move(delegate); }

    Stage stage() const { return m_stage; }
    QUrl picturesFolder() const;
    // Where the crop sheet reads the picture being edited.
    QUrl pictureUrl() const { return m_pictureUrl; }
    ICSquareCropper *cropper() const { return m_cropper; }
    QImage originalImage() const { return m_originalImage; }

    // The file chooser's answer. A file that is no readable picture leaves the chooser up and says
    // so; false then.
    Q_INVOKABLE bool didChooseFile(const QUrl &file);
    // The camera sheet hands over its ImageCapture; the next captured frame becomes the picture.
    Q_INVOKABLE void captureWith(QObject *imageCapture);
    // A picture taken (read from the chosen file, or captured by the camera).
    void didTakePicture(const QImage &image);
    // "选取" on the crop sheet.
    Q_INVOKABLE void usePhoto();
    // "重选" on the crop sheet: back to choosing.
    Q_INVOKABLE void retake();
    // "取消" anywhere, or the chooser closed without a file.
    Q_INVOKABLE void cancel();

signals:
    void stageChanged();

private:
    void finish();

    SourceType m_sourceType = SourceTypePhotoLibrary;
    bool m_allowsEditing = false;
    Delegate m_delegate;
    Stage m_stage = Choosing;
    QImage m_originalImage;
    QUrl m_pictureUrl;
    ICSquareCropper *m_cropper;
};
