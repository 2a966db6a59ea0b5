#pragma once

#include "device/ICImagePickerController.h"

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>

#include <functional>

namespace platform {
class ViewController;
}

// Why a picture request ended without a picture.
struct ICMediaError
{
    QString domain;
    int code = 0;
    QVariantMap userInfo; // "error_msg": the reason
    bool operator==(const ICMediaError &) const = default;
};

// The shared picture helper: presents the picker (photo library or camera) with square editing
// over a screen and hands back the chosen square as a 320 x 320 picture. It keeps only the blocks
// of the last request.
class ICMediaPhotoHelper : public QObject
{
    Q_OBJECT
public:
    enum SourceType { PhotoLibrary = 1, Camera = 2 };
    // The photo library permission as the platform reports it.
    enum AuthorizationStatus { NotDetermined, Restricted, Denied, Authorized };
    Q_ENUM(AuthorizationStatus)

    using SuccessFn = std::function<void(const QImage &image)>;
    using FailedFn = std::function<void(const ICMediaError &error)>;

    static ICMediaPhotoHelper *shareInstance();

    // Presents the picker for `sourceType` over `viewController`.
    void getPhotoByICLibry(platform::ViewController *viewController, int sourceType,
                           SuccessFn mediaphotoSuccessFn, FailedFn mediaphotoFailedFn);

    ICImagePickerController *ICImagePicker() const { return m_imagePicker; }
    SuccessFn successFn() const { return m_successFn; }
    FailedFn faliedFn() const { return m_faliedFn; }

    // A desktop grants the photo library; tests set another state. The answer the user gives to
    // the first request decides what an undecided state becomes.
    AuthorizationStatus authorizationStatus() const { return m_authorizationStatus; }
    void setAuthorizationStatus(AuthorizationStatus status) { m_authorizationStatus = status; }
    // The machine's model name ("hw.machine"); tests set one.
    QString deviceModel() const { return m_deviceModel; }
    void setDeviceModel(const QString &model) { m_deviceModel = model; }

    // The picker's delegate calls.
    void imagePickerController_didFinishPickingMediaWithInfo(ICImagePickerController *picker,
                                                             const QVariantMap &info);
    void imagePickerControllerDidCancel(ICImagePickerController *picker);

private:
    ICMediaPhotoHelper();
    void presentWhenAllowed(platform::ViewController *presenter, ICImagePickerController *picker);
    void askForPermission(platform::ViewController *presenter, ICImagePickerController *picker);
    void present(platform::ViewController *presenter, ICImagePickerController *picker);
    void dismiss(ICImagePickerController *picker);

    QPointer<ICImagePickerController> m_imagePicker;
    SuccessFn m_successFn;
    FailedFn m_faliedFn;
    AuthorizationStatus m_authorizationStatus = Authorized;
    QString m_deviceModel;
};
