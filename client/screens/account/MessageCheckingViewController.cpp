#include "screens/account/MessageCheckingViewController.h"

#include "app/AppDelegate.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/Label.h"
#include "platform/ui/TextField.h"
#include "service/NetWorkHelper.h"

#include <QPointer>

using platform::Hud;

MessageCheckingViewController::MessageCheckingViewController(qint64 viewType, QObject *parent)
    : AuthCodeFormViewController(QStringLiteral("MessageCheckingView.qml"), parent)
    , m_viewType(viewType)
    , m_labelTitle(new platform::Label(this))
    , m_fieldAuthCode(new platform::TextField(this))
    , m_fieldPassword(new platform::TextField(this))
    , m_fieldPasswordAgain(new platform::TextField(this))
{ }

QString MessageCheckingViewController::screenTitle() const
{
    return QStringLiteral("短信验证");
}

void MessageCheckingViewController::setLoadViewAction()
{
    setLoginBackground();
    layoutFields();
    emit layoutChanged();
}

void MessageCheckingViewController::layoutFields()
{
    m_labelTitle->setTextColor(Qt::white);
    layoutAuthCode(m_fieldAuthCode, QStringLiteral("完成"));
    AppDelegate::shared()->setButtonIsEnable(buttonAuthCode());

    const bool findPassword = m_viewType == FindPassword;
    layoutNewPassword(m_fieldPassword, m_fieldPasswordAgain);
    m_fieldPassword->setHidden(!findPassword);
    m_fieldPasswordAgain->setHidden(!findPassword);
}

void MessageCheckingViewController::setRefleshDataAction()
{
    m_labelTitle->setText(
            QStringLiteral("已向手机%1发送验证信息!").arg(maskedPhoneNumber(m_phoneNum)));
}

QString MessageCheckingViewController::maskedPhoneNumber(const QString &phoneNum)
{
    return QString(phoneNum).replace(3, 6, QStringLiteral("******"));
}

void MessageCheckingViewController::clickButtonGetCode()
{
    requestAuthCode([this](auto &&...callbacks) {
        NetWorkHelper::shareInstance()->getAuthCodeForForgetPasswordWithPhone_number(
                m_phoneNum, m_strImageCode, QString::number(m_viewType), callbacks...);
    });
}

void MessageCheckingViewController::clickButtonNext()
{
    if (m_viewType == FindPassword)
        setNewPassword();
    else
        unlockAccount();
}

void MessageCheckingViewController::setNewPassword()
{
    const QString password = m_fieldPassword->text();
    const QString again = m_fieldPasswordAgain->text();
    const QString refusal = m_fieldAuthCode->text().isEmpty() ? QStringLiteral("请输入验证码")
                                                              : newPasswordRefusal(password, again);
    if (!refusal.isEmpty()) {
        Hud::shared().showErrorWithStatus(refusal);
        return;
    }
    resetPassword(m_phoneNum, m_strImageCode, m_fieldAuthCode->text(), password, again);
}

void MessageCheckingViewController::unlockAccount()
{
    // Intended: nothing is checked here; an empty code goes to the service as it is.
    QPointer<MessageCheckingViewController> self(this);
    NetWorkHelper::shareInstance()->unlockPswWithphone_number(
            m_phoneNum, m_strImageCode, m_fieldAuthCode->text(),
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在解锁..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &, const QVariant &) {
                if (self)
                    self->popToRoot();
                showSuccess(QStringLiteral("账号解锁成功"));
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                showFailure(message);
            });
}
