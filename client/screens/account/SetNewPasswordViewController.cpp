#include "screens/account/SetNewPasswordViewController.h"

#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/TextField.h"

SetNewPasswordViewController::SetNewPasswordViewController(QObject *parent)
    : AccountFormViewController(QStringLiteral("SetNewPasswordView.qml"), parent)
    , m_fieldPassword(new platform::TextField(this))
    , m_fieldPasswordAgain(new platform::TextField(this))
    , m_buttonNext(new platform::Button(this))
{ }

QString SetNewPasswordViewController::screenTitle() const
{
    return QStringLiteral("设置新密码");
}

void SetNewPasswordViewController::setLoadViewAction()
{
    setLoginBackground();
    layoutNewPassword(m_fieldPassword, m_fieldPasswordAgain);
    layoutButton(m_buttonNext, QStringLiteral("确定"), [this] { clickButtonNext(); });
    emit layoutChanged();
}

void SetNewPasswordViewController::clickButtonNext()
{
    const QString password = m_fieldPassword->text();
    const QString again = m_fieldPasswordAgain->text();
    const QString refusal = newPasswordRefusal(password, again);
    if (!refusal.isEmpty()) {
        platform::Hud::shared().showErrorWithStatus(refusal);
        return;
    }
    resetPassword(m_strPhoneNum, m_strImageCode, m_strAuthCode, password, again);
}
