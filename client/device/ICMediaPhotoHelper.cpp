#include "device/ICMediaPhotoHelper.h"

#include "device/ICSquareCropper.h"
#include "platform/ui/AlertCenter.h"
#include "platform/ui/ViewController.h"

#include <QDebug>
#include <QSysInfo>

namespace {

ICMediaError pickerError(const QString &domain, int code, const QString &message)
{
    return {domain, code, {{QStringLiteral("error_msg"), message}}};
}

} // namespace

ICMediaPhotoHelper *ICMediaPhotoHelper::shareInstance()
{
    static ICMediaPhotoHelper *helper = new ICMediaPhotoHelper;
    return helper;
}

ICMediaPhotoHelper::ICMediaPhotoHelper()
    : m_deviceModel(QSysInfo::currentCpuArchitecture())
{ }

void ICMediaPhotoHelper::getPhotoByICLibry(platform::ViewController *viewController, int sourceType,
                                           SuccessFn mediaphotoSuccessFn,
                                           FailedFn mediaphotoFailedFn)
{
    m_successFn = std::move(mediaphotoSuccessFn);
    m_faliedFn = std::move(mediaphotoFailedFn);
    if (m_deviceModel.startsWith(QLatin1String("iPad1"))) {
        qInfo().noquote() << QStringLiteral("设备不支持");
        return;
    }
    auto *picker = new ICImagePickerController;
    if (sourceType == Camera)
        picker->setSourceType(ICImagePickerController::SourceTypeCamera);
    else if (sourceType == PhotoLibrary)
        picker->setSourceType(ICImagePickerController::SourceTypePhotoLibrary);
    picker->setAllowsEditing(true);
    picker->setDelegate(
            {[this](ICImagePickerController *p, const QVariantMap &info) {
                 imagePickerController_didFinishPickingMediaWithInfo(p, info);
             },
             [this](ICImagePickerController *p) { imagePickerControllerDidCancel(p); }});
    if (!viewController || !ICImagePickerController::isSourceTypeAvailable(picker->sourceType())) {
        delete picker;
        return;
    }
    presentWhenAllowed(viewController, picker);
}

void ICMediaPhotoHelper::presentWhenAllowed(platform::ViewController *presenter,
                                            ICImagePickerController *picker)
{
    switch (m_authorizationStatus) {
    case Restricted:
    case Denied:
        delete picker;
        platform::AlertCenter::shared().showAlert(
                QStringLiteral("Grant photos permission"),
                QStringLiteral("Grant permission to your photos. Go to Settings App > Privacy > "
                               "Photos."),
                QStringLiteral("Confirm"), {});
        return;
    case NotDetermined:
        return askForPermission(presenter, picker);
    case Authorized:
        return present(presenter, picker);
    }
}

// The platform's own question, asked once; a yes goes on to the picker at once.
void ICMediaPhotoHelper::askForPermission(platform::ViewController *presenter,
                                          ICImagePickerController *picker)
{
    QPointer<platform::ViewController> target(presenter);
    QPointer<ICImagePickerController> pending(picker);
    platform::AlertCenter::shared().showAlert(
            QStringLiteral("“Tarvel”想访问您的照片"),
            QStringLiteral("选择头像时需要读取您的照片。"), QStringLiteral("不允许"),
            {QStringLiteral("好")}, [this, target, pending](int index) {
                const bool granted = index == 1;
                m_authorizationStatus = granted ? Authorized : Denied;
                if (granted && target && pending)
                    present(target, pending);
                else
                    delete pending.data();
            });
}

void ICMediaPhotoHelper::present(platform::ViewController *presenter,
                                 ICImagePickerController *picker)
{
    m_imagePicker = picker;
    presenter->presentViewController(picker, true);
}

void ICMediaPhotoHelper::imagePickerController_didFinishPickingMediaWithInfo(
        ICImagePickerController *picker, const QVariantMap &info)
{
    const auto source = picker->sourceType();
    if (source != ICImagePickerController::SourceTypePhotoLibrary
        && source != ICImagePickerController::SourceTypeCamera) {
        if (const FailedFn failed = m_faliedFn)
            failed(pickerError(QStringLiteral("读取照片错误"), 400,
                               QStringLiteral("无法获取图片")));
    } else {
        const QImage original
                = info.value(ICImagePickerController::OriginalImageKey).value<QImage>();
        const QRect crop = info.value(ICImagePickerController::CropRectKey).toRect();
        const QImage square = ICSquareCropper::squareImage(original, crop);
        if (const SuccessFn success = m_successFn)
            success(square);
    }
    dismiss(picker);
}

void ICMediaPhotoHelper::imagePickerControllerDidCancel(ICImagePickerController *picker)
{
    if (const FailedFn failed = m_faliedFn)
        failed(pickerError(QStringLiteral("关闭"), 0, QStringLiteral("关闭")));
    dismiss(picker);
}

void ICMediaPhotoHelper::dismiss(ICImagePickerController *picker)
{
    if (m_imagePicker == picker)
        m_imagePicker.clear();
    picker->dismissViewController(true);
}
