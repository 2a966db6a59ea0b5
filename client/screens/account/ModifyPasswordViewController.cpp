#include "screens/account/ModifyPasswordViewController.h"

#include "platform/ui/Button.h"
#include "platform/ui/TextField.h"
#include "service/NetWorkHelper.h"

#include <QPointer>

namespace {

void secureField(platform::TextField *field, const QString &placeholder)
{
    field->setPlaceholder(placeholder);
    field->setSecureTextEntry(true);
    field->setClearButtonShown(true);
}

} // namespace

ModifyPasswordViewController::ModifyPasswordViewController(QObject *parent)
    : AccountFormViewController(QStringLiteral("ModifyPasswordView.qml"), parent)
    , m_fieldOldPassword(new platform::TextField(this))
    , m_fieldNewPassword(new platform::TextField(this))
    , m_fieldNewPasswordAgain(new platform::TextField(this))
    , m_buttonSave(new platform::Button(this))
{
    secureField(m_fieldOldPassword, QStringLiteral("请输入旧密码"));
    secureField(m_fieldNewPassword, QStringLiteral("请输入新密码"));
    secureField(m_fieldNewPasswordAgain, QStringLiteral("请再次输入新密码"));
    m_buttonSave->setTitle(QStringLiteral("保存"));
    m_buttonSave->setTitleColor(Qt::white);
    connect(m_buttonSave, &platform::Button::clicked, this,
            &ModifyPasswordViewController::clickButtonSave);
}

QString ModifyPasswordViewController::screenTitle() const
{
    return QStringLiteral("密码修改");
}

void ModifyPasswordViewController::clickButtonSave()
{
    const QString oldPass = m_fieldOldPassword->text();
    const QString newPass = m_fieldNewPassword->text();
    const QString newPassToo = m_fieldNewPasswordAgain->text();
    if (oldPass.isEmpty())
        return showError(QStringLiteral("请输入旧密码"));
    if (newPass.isEmpty())
        return showError(QStringLiteral("请输入新密码"));
    if (newPassToo.isEmpty())
        return showError(QStringLiteral("请重复输入新密码"));
    if (newPass != newPassToo)
        return showError(QStringLiteral("两次密码输入不同"));
    // No minimum length here, unlike registration: the service decides.
    QPointer<ModifyPasswordViewController> self(this);
    NetWorkHelper::shareInstance()->modifyPasswordWithOldPass(
            oldPass, newPass, newPassToo,
            [](const QVariantMap &) { showProgress(QStringLiteral("正在修改...")); },
            [](const QVariant &) { dismissProgress(); },
            [self](const QVariant &, const QVariant &) {
                if (self)
                    self->popToRootAndShow(QStringLiteral("密码修改成功"));
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                showFailure(message);
            });
}
