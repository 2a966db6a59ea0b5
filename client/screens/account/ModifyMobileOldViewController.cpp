#include "screens/account/ModifyMobileOldViewController.h"

#include "app/AppDelegate.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "screens/account/BindMobileViewController.h"
#include "service/NetWorkHelper.h"

#include <QPointer>

ModifyMobileOldViewController::ModifyMobileOldViewController(QObject *parent)
    : AuthCodeFormViewController(QStringLiteral("ModifyMobileOldView.qml"), parent)
    , m_labelTip(new platform::Label(this))
    , m_fieldNewPsw(new platform::TextField(this))
    , m_fieldPassword(new platform::TextField(this))
{
    layoutAuthCode(m_fieldNewPsw, QStringLiteral("下一步"));
    m_fieldPassword->setPlaceholder(QStringLiteral("请输入当前密码"));
    m_fieldPassword->setSecureTextEntry(true);
}

QString ModifyMobileOldViewController::screenTitle() const
{
    return QStringLiteral("短信验证");
}

QString ModifyMobileOldViewController::tipForNumber(const QString &phoneNumber)
{
    if (phoneNumber.length() != 11)
        return QStringLiteral("无手机号");
    QString masked = phoneNumber;
    masked.replace(3, 6, QStringLiteral("******"));
    return QStringLiteral("已向手机%1发送验证码!").arg(masked);
}

void ModifyMobileOldViewController::setLoadViewAction()
{
    m_labelTip->setText(tipForNumber(phoneNumber()));
    AppDelegate::shared()->setButtonIsEnable(buttonAuthCode());
}

QString ModifyMobileOldViewController::phoneNumber() const
{
    const std::optional<Object_User> user = signedInUser();
    return user ? user->phone_number : QString();
}

void ModifyMobileOldViewController::clickButtonGetCode()
{
    requestAuthCode([this](auto &&...callbacks) {
        NetWorkHelper::shareInstance()->getAuthCodeWithPhone_number(phoneNumber(), QString(),
                                                                    callbacks...);
    });
}

void ModifyMobileOldViewController::clickButtonNext()
{
    const QString code = m_fieldNewPsw->text();
    const QString password = m_fieldPassword->text();
    if (code.isEmpty())
        return showError(QStringLiteral("请输入验证码"));
    if (password.isEmpty())
        return showError(QStringLiteral("请输入密码"));
    QPointer<ModifyMobileOldViewController> self(this);
    NetWorkHelper::shareInstance()->checkingMobileWithPhone_number(
            phoneNumber(), code, password,
            [](const QVariantMap &) { showProgress(QStringLiteral("正在验证...")); },
            [](const QVariant &) { dismissProgress(); },
            [self](const QVariant &, const QVariant &) {
                if (!self || !self->navigationController())
                    return;
                self->navigationController()->pushViewController(new BindMobileViewController,
                                                                 true);
                showSuccess(QStringLiteral("验证成功"));
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                showFailure(message);
            });
}
