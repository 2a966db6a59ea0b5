#include "screens/account/RegisterViewController.h"

#include "app/AppDelegate.h"
#include "models/JSONModel.h"
#include "models/Object_User.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "screens/account/FailureMessage.h"
#include "screens/account/FoldingRowView.h"
#include "screens/account/ImageCodeButton.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"
#include "service/NetWorkHelper.h"
#include "util/AppConfig.h"
#include "util/TTIFormatValidate.h"

#include <QPointer>

using platform::Hud;

namespace {
constexpr qsizetype PasswordMinimum = 8;
} // namespace

RegisterViewController::RegisterViewController(QObject *parent)
    : AuthCodeFormViewController(QStringLiteral("RegisterView.qml"), parent)
    , m_fieldUser(new platform::TextField(this))
    , m_fieldImageCode(new platform::TextField(this))
    , m_imageCode(new ImageCodeButton(this))
    , m_viewAuthCode(new FoldingRowView(AuthCodeRowHeight, this))
    , m_fieldAuthCode(new platform::TextField(this))
    , m_fieldPassword(new platform::TextField(this))
    , m_fieldPasswordAgain(new platform::TextField(this))
{ }

QString RegisterViewController::screenTitle() const
{
    return QStringLiteral("注册");
}

void RegisterViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    setNavigationBarTransparent(true);
}

void RegisterViewController::setLoadViewAction()
{
    setLoginBackground();
    layoutFields();
    emit layoutChanged();
    refreshData();
}

void RegisterViewController::layoutFields()
{
    m_fieldUser->setPlaceholder(QStringLiteral("手机号/邮箱"));
    connect(m_fieldUser, &platform::TextField::firstResponderChanged, this, [this] {
        if (!m_fieldUser->isFirstResponder())
            textFieldDidEndEditing(m_fieldUser);
    });
    m_fieldImageCode->setPlaceholder(QStringLiteral("请输入验证码"));
    connect(m_imageCode, &platform::Button::clicked, this, &RegisterViewController::clickImageCode);

    layoutAuthCode(m_fieldAuthCode, QStringLiteral("完成"));
    AppDelegate::shared()->setButtonIsEnable(buttonAuthCode());

    m_fieldPassword->setPlaceholder(QStringLiteral("请输入密码"));
    m_fieldPassword->setSecureTextEntry(true);
    m_fieldPasswordAgain->setPlaceholder(QStringLiteral("确认密码"));
    m_fieldPasswordAgain->setSecureTextEntry(true);
}

void RegisterViewController::refreshData()
{
    m_imageCode->refreshData();
}

void RegisterViewController::clickImageCode()
{
    refreshData();
}

void RegisterViewController::textFieldDidEndEditing(platform::TextField *textField)
{
    if (textField != m_fieldUser)
        return;
    if (TTIFormatValidate::isValidateEmail(textField->text()))
        m_viewAuthCode->fold();
    else
        m_viewAuthCode->unfold();
}

void RegisterViewController::clickButtonGetCode()
{
    if (!TTIFormatValidate::isValidateMobilePhone(m_fieldUser->text())) {
        showError(QStringLiteral("请输入正确的手机号"));
        return;
    }
    // An empty captcha goes to the service as it is; the service judges it.
    requestAuthCode([this](auto &&...callbacks) {
        NetWorkHelper::shareInstance()->getAuthCodeWithPhone_number(
                m_fieldUser->text(), m_fieldImageCode->text(), callbacks...);
    });
}

void RegisterViewController::clickButtonNext()
{
    const QString account = m_fieldUser->text();
    const QString authCode = m_fieldAuthCode->text();
    const QString password = m_fieldPassword->text();
    QString refusal;
    if (account.isEmpty())
        refusal = QStringLiteral("请输入手机号或邮箱");
    // A mail address needs no SMS code; any other account is not checked for mobile form here.
    else if (authCode.isEmpty() && !TTIFormatValidate::isValidateEmail(account))
        refusal = QStringLiteral("请输入验证码");
    else if (password.size() < PasswordMinimum)
        refusal = QStringLiteral("请输入8位以上的密码");
    else if (m_fieldPasswordAgain->text() != password)
        refusal = QStringLiteral("两次密码输入不同");
    if (!refusal.isEmpty()) {
        showError(refusal);
        return;
    }

    QPointer<RegisterViewController> self(this);
    NetWorkHelper::shareInstance()->registerWithLogin_name(
            account, authCode, password, m_fieldPasswordAgain->text(), m_fieldImageCode->text(),
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在注册..."), true);
            },
            // Intended: the progress HUD stays until the outcome's HUD replaces it.
            [](const QVariant &) {},
            [self](const QVariant &, const QVariant &) {
                if (self)
                    self->registrationSucceeded();
            },
            [self](const QVariant &, const QString &message, const QVariant &) {
                if (self)
                    self->registrationFailed(message);
            });
}

void RegisterViewController::registrationSucceeded()
{
    if (!TTIFormatValidate::isValidateEmail(m_fieldUser->text())) {
        signInAfterRegistration();
        return;
    }
    // A mail account signs in once its activation link was opened.
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
    Hud::shared().showSuccessWithStatus(QStringLiteral("注册成功,请前往邮箱激活账号。"), true);
}

void RegisterViewController::registrationFailed(const QString &message)
{
    // Intended: a failure text holding neither "message" nor "human_name" shows an empty HUD.
    Hud::shared().showErrorWithStatus(FailureMessage::messageAndHumanName(message), true);
}

void RegisterViewController::signInAfterRegistration()
{
    QPointer<RegisterViewController> self(this);
    NetWorkHelper::shareInstance()->signInWithAccountEmail(
            m_fieldUser->text(), m_fieldPassword->text(), {},
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &data, const QVariant &) {
                if (self)
                    self->signInSucceeded(data);
            },
            // Intended: no unlock route here; a fresh account is not locked.
            [](const QVariant &, const QString &message, const QVariant &) {
                if (message == QLatin1String("authentication.failure.unconfirmed"))
                    Hud::shared().showErrorWithStatus(
                            QStringLiteral("继续操作前请先到邮箱激活您的账号"));
                else if (message == QLatin1String("authentication.failure.locked"))
                    Hud::shared().showErrorWithStatus(QStringLiteral("账号被锁定"));
                else
                    Hud::shared().showErrorWithStatus(FailureMessage::readable(message), true);
            });
}

// As the sign-in screen's success, except (intended) that "username" is not stored, the cart count
// is not refreshed and the HUD says "注册成功".
void RegisterViewController::signInSucceeded(const QVariant &result)
{
    ICCookiesHelper::saveCookiesWithUrl(QStringLiteral("%1/sign_in.json").arg(ApiBaseUrl()));
    if (result.typeId() == QMetaType::QVariantMap) {
        AppDelegate::shared()->setUserLogin(JSONModel::initWithDictionary<Object_User>(result));
        ICSessionHelper::userSaveObjectUser(result.toMap());
    }
    QPointer<RegisterViewController> self(this);
    if (const LoginSuccess loginSuccess = m_myLoginSuccess)
        loginSuccess(m_viewFather);
    if (self)
        dismissViewController(true);
    Hud::shared().showSuccessWithStatus(QStringLiteral("注册成功"), true);
}
