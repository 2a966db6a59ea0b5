#include "screens/account/ImageCodeButton.h"

#include "platform/ui/Hud.h"
#include "platform/ui/MemoryImageProvider.h"
#include "screens/account/FailureMessage.h"
#include "service/NetWorkHelper.h"

#include <QPointer>

using platform::Hud;

ImageCodeButton::ImageCodeButton(QObject *parent)
    : platform::Button(parent)
{ }

void ImageCodeButton::setBackgroundImage(const QImage &image)
{
    m_backgroundImage = image;
    m_backgroundImageUrl
            = platform::MemoryImageProvider::publish(this, QStringLiteral("background"), image);
    emit backgroundImageChanged();
}

void ImageCodeButton::refreshData()
{
    QPointer<ImageCodeButton> self(this);
    NetWorkHelper::shareInstance()->getImageCodeWithStartFn(
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在加载"), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &data, const QVariant &) {
                const QImage picture = QImage::fromData(data.toByteArray());
                // Bytes that are no picture leave the one shown before.
                if (self && !picture.isNull())
                    self->setBackgroundImage(picture);
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                Hud::shared().showErrorWithStatus(FailureMessage::readable(message), true);
            });
}
