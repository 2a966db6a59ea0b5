#include "screens/account/SetNewPasswordViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "service/NetWorkHelper.h"

#include <QPointer>

using platform::Hud;

namespace {
constexpr qsizetype PasswordMinimum = 8;
} // namespace

SetNewPasswordViewController::SetNewPasswordViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_fieldPassword(new platform::TextField(this))
    , m_fieldPasswordAgain(new platform::TextField(this))
    , m_buttonNext(new platform::Button(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/SetNewPasswordView.qml")));
}

void SetNewPasswordViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("设置新密码"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void SetNewPasswordViewController::setLoadViewAction()
{
    m_backgroundImage = QStringLiteral("login_background");
    m_fieldPassword->setPlaceholder(QStringLiteral("请输入至少8位字母或数字"));
    m_fieldPassword->setSecureTextEntry(true);
    // Intended: only the new password hides its characters, the repeat shows them.
    m_fieldPasswordAgain->setPlaceholder(QStringLiteral("请再次输入密码"));
    m_buttonNext->setTitle(QStringLiteral("确定"));
    m_buttonNext->setTitleColor(Qt::white);
    connect(m_buttonNext, &platform::Button::clicked, this,
            &SetNewPasswordViewController::clickButtonNext);
    emit layoutChanged();
}

void SetNewPasswordViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void SetNewPasswordViewController::clickButtonNext()
{
    const QString password = m_fieldPassword->text();
    const QString again = m_fieldPasswordAgain->text();
    QString refusal;
    if (password.size() < PasswordMinimum)
        refusal = QStringLiteral("请输入8位以上密码");
    else if (again.isEmpty())
        refusal = QStringLiteral("请再次输入密码");
    else if (again != password)
        refusal = QStringLiteral("两次密码输入结果不同");
    if (!refusal.isEmpty()) {
        Hud::shared().showErrorWithStatus(refusal);
        return;
    }
    QPointer<SetNewPasswordViewController> self(this);
    NetWorkHelper::shareInstance()->findPswWithphone_number(
            m_strPhoneNum, m_strImageCode, m_strAuthCode, password, again,
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在修改密码"), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &, const QVariant &) {
                Hud::shared().showSuccessWithStatus(QStringLiteral("密码修改成功"));
                if (self && self->navigationController())
                    self->navigationController()->popToRootViewController(true);
            },
            // Intended: one text whatever the service said.
            [](const QVariant &, const QString &, const QVariant &) {
                Hud::shared().showErrorWithStatus(QStringLiteral("出错啦,请重试!"));
            });
}
