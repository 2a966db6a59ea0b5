#include "screens/account/AccountFormViewController.h"

#include "app/AppDelegate.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "screens/account/FailureMessage.h"
#include "service/NetWorkHelper.h"

#include <QPointer>

using platform::Hud;

namespace {
constexpr qsizetype PasswordMinimum = 8;
} // namespace

AccountFormViewController::AccountFormViewController(const QString &viewFile, QObject *parent)
    : Q9FatherViewController(parent)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/") + viewFile));
}

void AccountFormViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(screenTitle());
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void AccountFormViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void AccountFormViewController::setLoginBackground()
{
    m_backgroundImage = QStringLiteral("login_background");
}

void AccountFormViewController::layoutButton(platform::Button *button, const QString &title,
                                             std::function<void()> click)
{
    button->setTitle(title);
    button->setTitleColor(Qt::white);
    connect(button, &platform::Button::clicked, this, std::move(click));
}

void AccountFormViewController::layoutNewPassword(platform::TextField *password,
                                                  platform::TextField *again)
{
    password->setPlaceholder(QStringLiteral("请输入至少8位字母或数字"));
    password->setSecureTextEntry(true);
    // Intended: only the new password hides its characters, the repeat shows them.
    again->setPlaceholder(QStringLiteral("请再次输入密码"));
}

void AccountFormViewController::requestAuthCode(const ServiceRequest &send, bool startsCountdown)
{
    send([](const QVariantMap &) { showProgress(QStringLiteral("正在获取验证码...")); },
         [](const QVariant &) { dismissProgress(); },
         [startsCountdown](const QVariant &, const QVariant &) {
             if (startsCountdown)
                 AppDelegate::shared()->setTimerStart();
             showSuccess(QStringLiteral("验证码发送成功"));
         },
         [](const QVariant &, const QString &message, const QVariant &) { showFailure(message); });
}

QString AccountFormViewController::newPasswordRefusal(const QString &password, const QString &again)
{
    if (password.size() < PasswordMinimum)
        return QStringLiteral("请输入8位以上密码");
    if (again.isEmpty())
        return QStringLiteral("请再次输入密码");
    if (again != password)
        return QStringLiteral("两次密码输入结果不同");
    return QString();
}

void AccountFormViewController::resetPassword(const QString &phoneNumber, const QString &imageCode,
                                              const QString &authCode, const QString &password,
                                              const QString &again)
{
    QPointer<AccountFormViewController> self(this);
    NetWorkHelper::shareInstance()->findPswWithphone_number(
            phoneNumber, imageCode, authCode, password, again,
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在修改密码"), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &, const QVariant &) {
                Hud::shared().showSuccessWithStatus(QStringLiteral("密码修改成功"));
                if (self)
                    self->popToRoot();
            },
            // Intended: one text whatever the service said.
            [](const QVariant &, const QString &, const QVariant &) {
                Hud::shared().showErrorWithStatus(QStringLiteral("出错啦,请重试!"));
            });
}

std::optional<Object_User> AccountFormViewController::signedInUser()
{
    return AppDelegate::shared()->userLogin();
}

void AccountFormViewController::showError(const QString &text)
{
    Hud::shared().showErrorWithStatus(text, true);
}

// The service's field refusals arrive as printed descriptions whose "message" and "human_name"
// pieces make the sentence; a failure that is already a sentence (a network or session error)
// is shown as it is rather than as an empty HUD.
void AccountFormViewController::showFailure(const QString &message)
{
    Hud::shared().showErrorWithStatus(FailureMessage::readable(message), true);
}

void AccountFormViewController::showSuccess(const QString &text)
{
    Hud::shared().showSuccessWithStatus(text, true);
}

void AccountFormViewController::showProgress(const QString &text)
{
    Hud::shared().showWithStatus(text, true);
}

void AccountFormViewController::dismissProgress()
{
    Hud::shared().dismiss();
}

void AccountFormViewController::popToRootAndShow(const QString &success)
{
    popToRoot();
    showSuccess(success);
}

void AccountFormViewController::popToRoot()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popToRootViewController(true);
}
