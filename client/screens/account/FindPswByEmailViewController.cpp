#include "screens/account/FindPswByEmailViewController.h"

#include "platform/ui/Hud.h"
#include "platform/ui/TextField.h"
#include "service/NetWorkHelper.h"
#include "util/TTIFormatValidate.h"

#include <QPointer>

using platform::Hud;

FindPswByEmailViewController::FindPswByEmailViewController(qint64 viewType, QObject *parent)
    : RecoveryFormViewController(viewType, QStringLiteral("请输入邮箱"),
                                 QStringLiteral("发送验证邮件"), parent)
{ }

void FindPswByEmailViewController::clickButtonNext()
{
    if (!TTIFormatValidate::isValidateEmail(fieldUser()->text())) {
        Hud::shared().showErrorWithStatus(QStringLiteral("请输入正确的邮箱"));
        return;
    }
    if (fieldAuthCode()->text().isEmpty()) {
        Hud::shared().showErrorWithStatus(QStringLiteral("请输入验证码"));
        return;
    }
    QPointer<FindPswByEmailViewController> self(this);
    NetWorkHelper::shareInstance()->findPswWithemail(
            fieldUser()->text(), fieldAuthCode()->text(), isUnlock(),
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在验证..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &, const QVariant &) {
                if (self)
                    self->popToRoot();
                Hud::shared().showSuccessWithStatus(QStringLiteral("邮件已发送,请前往邮箱查看"),
                                                    true);
            },
            // Intended: a refusal of the form reads as one general text.
            [](const QVariant &, const QString &message, const QVariant &) {
                if (message.contains(QLatin1String("message")))
                    Hud::shared().showErrorWithStatus(QStringLiteral("出错啦,请重试!"));
                else
                    Hud::shared().showErrorWithStatus(message, true);
            });
}
