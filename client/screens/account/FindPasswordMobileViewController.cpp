#include "screens/account/FindPasswordMobileViewController.h"

#include "app/AppDelegate.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "screens/account/FailureMessage.h"
#include "screens/account/MessageCheckingViewController.h"
#include "service/NetWorkHelper.h"
#include "util/TTIFormatValidate.h"

#include <QPointer>

using platform::Hud;

FindPasswordMobileViewController::FindPasswordMobileViewController(qint64 viewType, QObject *parent)
    : RecoveryFormViewController(viewType, QStringLiteral("请输入手机号"), QStringLiteral("下一步"),
                                 parent)
{ }

void FindPasswordMobileViewController::clickButtonNext()
{
    if (!TTIFormatValidate::isValidateMobilePhone(fieldUser()->text())) {
        Hud::shared().showErrorWithStatus(QStringLiteral("请输入正确的手机号"), true);
        return;
    }
    // The captcha is not checked for emptiness here; the service judges it.
    QPointer<FindPasswordMobileViewController> self(this);
    NetWorkHelper::shareInstance()->getAuthCodeForForgetPasswordWithPhone_number(
            fieldUser()->text(), fieldAuthCode()->text(), isUnlock(),
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在获取验证码..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &, const QVariant &) {
                AppDelegate::shared()->setTimerStart();
                if (self)
                    self->codeSent();
                Hud::shared().showSuccessWithStatus(QStringLiteral("验证码发送成功"), true);
            },
            // Intended: only the "message" and "human_name" pieces show, so the countdown's
            // refusal (which has neither) shows an empty HUD.
            [](const QVariant &, const QString &message, const QVariant &) {
                Hud::shared().showErrorWithStatus(FailureMessage::messageAndHumanName(message),
                                                  true);
            });
}

void FindPasswordMobileViewController::codeSent()
{
    auto *checking = new MessageCheckingViewController(viewType());
    checking->setPhoneNum(fieldUser()->text());
    checking->setStrImageCode(fieldAuthCode()->text());
    if (platform::NavigationController *navigation = navigationController())
        navigation->pushViewController(checking, true);
    else
        delete checking;
}
