#include "screens/account/BindMobileViewController.h"

#include "app/AppDelegate.h"
#include "platform/ui/Button.h"
#include "platform/ui/TextField.h"
#include "service/NetWorkHelper.h"

#include <QPointer>

namespace {

const QString ElevenDigits = QStringLiteral("请输入11位手机号");

} // namespace

BindMobileViewController::BindMobileViewController(QObject *parent)
    : AuthCodeFormViewController(QStringLiteral("BindMobileView.qml"), parent)
    , m_fieldMobile(new platform::TextField(this))
    , m_fieldAuthCode(new platform::TextField(this))
    , m_fieldPassword(new platform::TextField(this))
{
    m_fieldMobile->setPlaceholder(QStringLiteral("请输入新手机号"));
    m_fieldMobile->setKeyboardType(platform::TextField::PhonePad);
    m_fieldMobile->setClearButtonShown(true);
    layoutAuthCode(m_fieldAuthCode, QStringLiteral("完成"));
    m_fieldPassword->setPlaceholder(QStringLiteral("请输入当前密码"));
    m_fieldPassword->setSecureTextEntry(true);
}

QString BindMobileViewController::screenTitle() const
{
    return QStringLiteral("绑定手机");
}

// Intended: this screen neither registers its button with the countdown nor starts it; the
// countdown gate of the code request still refuses while another screen's countdown runs.
void BindMobileViewController::clickButtonGetCode()
{
    const QString number = m_fieldMobile->text();
    if (number.length() != 11)
        return showError(ElevenDigits);
    requestAuthCode(
            [number](auto &&...callbacks) {
                NetWorkHelper::shareInstance()->getAuthCodeWithPhone_number(number, QString(),
                                                                            callbacks...);
            },
            false);
}

void BindMobileViewController::clickButtonNext()
{
    const QString number = m_fieldMobile->text();
    const QString code = m_fieldAuthCode->text();
    const QString password = m_fieldPassword->text();
    if (number.length() != 11)
        return showError(ElevenDigits);
    if (code.isEmpty())
        return showError(QStringLiteral("请输入验证码"));
    if (password.isEmpty())
        return showError(QStringLiteral("请输入密码"));
    QPointer<BindMobileViewController> self(this);
    NetWorkHelper::shareInstance()->bindingMobileWithPhone_number(
            number, code, password,
            [](const QVariantMap &) { showProgress(QStringLiteral("正在绑定...")); },
            [](const QVariant &) { dismissProgress(); },
            [self, number](const QVariant &, const QVariant &) {
                // The stored user keeps the old number until the next sign-in.
                if (std::optional<Object_User> user = signedInUser()) {
                    user->phone_number = number;
                    AppDelegate::shared()->setUserLogin(user);
                }
                if (self)
                    self->popToRootAndShow(QStringLiteral("绑定成功"));
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                showFailure(message);
            });
}
