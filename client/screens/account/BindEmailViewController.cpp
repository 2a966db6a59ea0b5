#include "screens/account/BindEmailViewController.h"

#include "app/AppDelegate.h"
#include "platform/ui/Button.h"
#include "platform/ui/TextField.h"
#include "service/ICSessionHelper.h"
#include "service/NetWorkHelper.h"

#include <QPointer>

BindEmailViewController::BindEmailViewController(QObject *parent)
    : AccountFormViewController(QStringLiteral("BindEmailView.qml"), parent)
    , m_fieldEmail(new platform::TextField(this))
    , m_fieldPassword(new platform::TextField(this))
    , m_buttonNext(new platform::Button(this))
{
    m_fieldEmail->setPlaceholder(QStringLiteral("请输入邮箱地址"));
    m_fieldEmail->setKeyboardType(platform::TextField::EmailAddress);
    m_fieldEmail->setClearButtonShown(true);
    m_fieldPassword->setPlaceholder(QStringLiteral("请输入当前密码"));
    m_fieldPassword->setSecureTextEntry(true);
    m_buttonNext->setTitle(QStringLiteral("完成"));
    m_buttonNext->setTitleColor(Qt::white);
    connect(m_buttonNext, &platform::Button::clicked, this,
            &BindEmailViewController::clickButtonNext);
}

QString BindEmailViewController::screenTitle() const
{
    return QStringLiteral("绑定邮箱");
}

void BindEmailViewController::clickButtonNext()
{
    const QString email = m_fieldEmail->text();
    const QString password = m_fieldPassword->text();
    if (!ICSessionHelper::stringCheckEmail(email))
        return showError(QStringLiteral("请输入正确的邮箱地址"));
    if (password.isEmpty())
        return showError(QStringLiteral("请输入密码"));
    QPointer<BindEmailViewController> self(this);
    NetWorkHelper::shareInstance()->bindingEmailWithEmail(
            email, password,
            [](const QVariantMap &) { showProgress(QStringLiteral("正在绑定...")); },
            [](const QVariant &) { dismissProgress(); },
            [self, email](const QVariant &, const QVariant &) {
                // The stored user keeps the old address until the next sign-in.
                if (std::optional<Object_User> user = signedInUser()) {
                    user->email = email;
                    AppDelegate::shared()->setUserLogin(user);
                }
                if (self)
                    self->popToRootAndShow(QStringLiteral("绑定成功"));
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                showFailure(message);
            });
}
