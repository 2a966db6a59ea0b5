#include "screens/account/MessageCheckingViewController.h"

#include "app/AppDelegate.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/Label.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "screens/account/FailureMessage.h"
#include "service/NetWorkHelper.h"

#include <QPointer>

using platform::Hud;

namespace {
constexpr qsizetype PasswordMinimum = 8;
} // namespace

MessageCheckingViewController::MessageCheckingViewController(qint64 viewType, QObject *parent)
    : Q9FatherViewController(parent)
    , m_viewType(viewType)
    , m_labelTitle(new platform::Label(this))
    , m_fieldAuthCode(new platform::TextField(this))
    , m_buttonAuthCode(new platform::Button(this))
    , m_fieldPassword(new platform::TextField(this))
    , m_fieldPasswordAgain(new platform::TextField(this))
    , m_buttonNext(new platform::Button(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/MessageCheckingView.qml")));
}

void MessageCheckingViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("短信验证"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void MessageCheckingViewController::setLoadViewAction()
{
    m_backgroundImage = QStringLiteral("login_background");
    layoutFields();
    emit layoutChanged();
}

void MessageCheckingViewController::layoutFields()
{
    m_labelTitle->setTextColor(Qt::white);
    m_fieldAuthCode->setPlaceholder(QStringLiteral("请输入短信验证码"));
    m_fieldAuthCode->setKeyboardType(platform::TextField::NumberPad);
    m_buttonAuthCode->setTitle(QStringLiteral("获取验证码"));
    m_buttonAuthCode->setTitleColor(Qt::white);
    connect(m_buttonAuthCode, &platform::Button::clicked, this,
            &MessageCheckingViewController::clickButtonGetCode);
    AppDelegate::shared()->setButtonIsEnable(m_buttonAuthCode);

    const bool findPassword = m_viewType == FindPassword;
    m_fieldPassword->setPlaceholder(QStringLiteral("请输入至少8位字母或数字"));
    m_fieldPassword->setSecureTextEntry(true);
    m_fieldPassword->setHidden(!findPassword);
    // Intended: only the new password hides its characters, the repeat shows them.
    m_fieldPasswordAgain->setPlaceholder(QStringLiteral("请再次输入密码"));
    m_fieldPasswordAgain->setHidden(!findPassword);

    m_buttonNext->setTitle(QStringLiteral("完成"));
    m_buttonNext->setTitleColor(Qt::white);
    connect(m_buttonNext, &platform::Button::clicked, this,
            &MessageCheckingViewController::clickButtonNext);
}

void MessageCheckingViewController::setRefleshDataAction()
{
    m_labelTitle->setText(
            QStringLiteral("已向手机%1发送验证信息!").arg(maskedPhoneNumber(m_phoneNum)));
}

void MessageCheckingViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

QString MessageCheckingViewController::maskedPhoneNumber(const QString &phoneNum)
{
    return QString(phoneNum).replace(3, 6, QStringLiteral("******"));
}

void MessageCheckingViewController::clickButtonGetCode()
{
    NetWorkHelper::shareInstance()->getAuthCodeForForgetPasswordWithPhone_number(
            m_phoneNum, m_strImageCode, QString::number(m_viewType),
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在获取验证码..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [](const QVariant &, const QVariant &) {
                AppDelegate::shared()->setTimerStart();
                Hud::shared().showSuccessWithStatus(QStringLiteral("验证码发送成功"), true);
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                Hud::shared().showErrorWithStatus(FailureMessage::readable(message), true);
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
    QString refusal;
    if (m_fieldAuthCode->text().isEmpty())
        refusal = QStringLiteral("请输入验证码");
    else if (password.size() < PasswordMinimum)
        refusal = QStringLiteral("请输入8位以上密码");
    else if (again.isEmpty())
        refusal = QStringLiteral("请再次输入密码");
    else if (again != password)
        refusal = QStringLiteral("两次密码输入结果不同");
    if (!refusal.isEmpty()) {
        Hud::shared().showErrorWithStatus(refusal);
        return;
    }
    QPointer<MessageCheckingViewController> self(this);
    NetWorkHelper::shareInstance()->findPswWithphone_number(
            m_phoneNum, m_strImageCode, m_fieldAuthCode->text(), password, again,
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在修改密码"), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &, const QVariant &) {
                Hud::shared().showSuccessWithStatus(QStringLiteral("密码修改成功"));
                if (self)
                    self->popToSignIn();
            },
            // Intended: one text whatever the service said.
            [](const QVariant &, const QString &, const QVariant &) {
                Hud::shared().showErrorWithStatus(QStringLiteral("出错啦,请重试!"));
            });
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
                    self->popToSignIn();
                Hud::shared().showSuccessWithStatus(QStringLiteral("账号解锁成功"), true);
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                Hud::shared().showErrorWithStatus(FailureMessage::readable(message), true);
            });
}

void MessageCheckingViewController::popToSignIn()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popToRootViewController(true);
}
