#include "screens/account/NavRootViewController.h"

#include "app/AppDelegate.h"
#include "models/JSONModel.h"
#include "models/Object_User.h"
#include "platform/UserDefaults.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "screens/account/FailureMessage.h"
#include "screens/account/FindPasswordViewController.h"
#include "screens/account/RegisterViewController.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"
#include "service/NetWorkHelper.h"
#include "util/AppConfig.h"
#include "util/ObjectDescription.h"

using platform::Hud;

const QString NavRootViewController::usernameKey = QStringLiteral("username");

namespace {

const QString UnconfirmedMessage = QStringLiteral("authentication.failure.unconfirmed");
const QString LockedMessage = QStringLiteral("authentication.failure.locked");
// The service's code for an account locked by failed sign-ins.
const QString UnlockCode = QStringLiteral("601");

bool isUnlockAnswer(const QVariant &response)
{
    if (response.typeId() != QMetaType::QVariantMap)
        return false;
    const QVariant code = response.toMap().value(QStringLiteral("code"));
    return code.isValid() && objectDescription(code) == UnlockCode;
}

} // namespace

NavRootViewController::NavRootViewController(QObject *parent)
    : AccountFormViewController(QStringLiteral("NavRootView.qml"), parent)
    , m_fieldUser(new platform::TextField(this))
    , m_fieldPassword(new platform::TextField(this))
    , m_buttonLogin(new platform::Button(this))
    , m_buttonRegister(new platform::Button(this))
    , m_buttonForget(new platform::Button(this))
{ }

NavRootViewController::NavRootViewController(qint64 viewFather, LoginSuccess loginSuccess,
                                             QObject *parent)
    : NavRootViewController(parent)
{
    initWithViewFather(viewFather, std::move(loginSuccess));
}

NavRootViewController *NavRootViewController::initWithViewFather(qint64 viewFather,
                                                                 LoginSuccess loginSuccess)
{
    if (loginSuccess) {
        m_myLoginSuccess = std::move(loginSuccess);
        m_viewFather = viewFather;
    }
    return this;
}

QString NavRootViewController::screenTitle() const
{
    return QStringLiteral("登录");
}

void NavRootViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    // The background picture shows through the bar.
    setNavigationBarTransparent(true);
}

void NavRootViewController::setLoadViewAction()
{
    setLoginBackground();
    m_imageHead = QStringLiteral("login_header");
    layoutFields();
    emit layoutChanged();
}

void NavRootViewController::layoutFields()
{
    m_fieldUser->setPlaceholder(QStringLiteral("手机号/邮箱"));
    m_fieldUser->setKeyboardType(platform::TextField::Default);
    m_fieldUser->setClearButtonShown(true);
    m_fieldUser->setLeftImageName(QStringLiteral("login_user"));

    m_fieldPassword->setPlaceholder(QStringLiteral("密码"));
    m_fieldPassword->setSecureTextEntry(true);
    m_fieldPassword->setLeftImageName(QStringLiteral("login_psw"));

    layoutButton(m_buttonLogin, QStringLiteral("登录"), [this] { clickButtonLogin(); });
    layoutButton(m_buttonForget, QStringLiteral("找回密码"), [this] { clickButtonForget(); });
    layoutButton(m_buttonRegister, QStringLiteral("注册"), [this] { clickButtonRegister(); });
}

void NavRootViewController::setRefleshDataAction()
{
    const QVariant username = platform::UserDefaults::standard().objectForKey(usernameKey);
    m_fieldUser->setText(username.isValid() ? username.toString() : QString());
}

void NavRootViewController::setNavLeftAction()
{
    dismissViewController(true);
}

void NavRootViewController::clickButtonLogin()
{
    // Any non-empty text goes to the service as typed; it judges the form.
    if (m_fieldUser->text().isEmpty()) {
        Hud::shared().showErrorWithStatus(QStringLiteral("请输入账号"), true);
        return;
    }
    if (m_fieldPassword->text().isEmpty()) {
        Hud::shared().showErrorWithStatus(QStringLiteral("请输入密码"), true);
        return;
    }
    QPointer<NavRootViewController> self(this);
    NetWorkHelper::shareInstance()->signInWithAccountEmail(
            m_fieldUser->text(), m_fieldPassword->text(),
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在登录..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &data, const QVariant &) {
                if (self)
                    self->signInSucceeded(data);
            },
            [self](const QVariant &, const QString &message, const QVariant &response) {
                if (self)
                    self->signInFailed(message, response);
            });
}

// The order matters to whoever watches: cookies, user, stored user, "username", the presenter's
// continuation, dismissal, the HUD, the cart count.
void NavRootViewController::signInSucceeded(const QVariant &result)
{
    ICCookiesHelper::saveCookiesWithUrl(QStringLiteral("%1/sign_in.json").arg(ApiBaseUrl()));
    if (result.typeId() == QMetaType::QVariantMap) {
        AppDelegate::shared()->setUserLogin(JSONModel::initWithDictionary<Object_User>(result));
        ICSessionHelper::userSaveObjectUser(result.toMap());
    }
    auto &defaults = platform::UserDefaults::standard();
    defaults.setObject(m_fieldUser->text(), usernameKey);
    defaults.synchronize();

    QPointer<NavRootViewController> self(this);
    if (const LoginSuccess loginSuccess = m_myLoginSuccess)
        loginSuccess(m_viewFather);
    if (self)
        dismissViewController(true);
    Hud::shared().showSuccessWithStatus(QStringLiteral("登录成功"), true);
    getCartNum();
}

void NavRootViewController::signInFailed(const QString &message, const QVariant &response)
{
    if (isUnlockAnswer(response))
        pushFindPassword(FindPasswordViewController::Unlock);
    if (message == UnconfirmedMessage)
        Hud::shared().showErrorWithStatus(QStringLiteral("继续操作前请先到邮箱激活您的账号"));
    else if (message == LockedMessage)
        Hud::shared().showErrorWithStatus(QStringLiteral("账号被锁定"));
    else
        Hud::shared().showErrorWithStatus(FailureMessage::readable(message), true);
}

void NavRootViewController::getCartNum()
{
    NetWorkHelper::shareInstance()->getCartDataWithStartFn(
            {}, {},
            [](const QVariant &, const QVariant &) {
                ICCookiesHelper::updateCartNumFromCookiesForPath(QStringLiteral("/cart.json"));
            },
            [](const QVariant &, const QString &, const QVariant &) {});
}

void NavRootViewController::clickButtonRegister()
{
    auto *registration = new RegisterViewController;
    registration->setViewFather(m_viewFather);
    registration->setMyLoginSuccess(m_myLoginSuccess);
    if (platform::NavigationController *navigation = navigationController())
        navigation->pushViewController(registration, true);
    else
        delete registration;
}

void NavRootViewController::clickButtonForget()
{
    pushFindPassword(FindPasswordViewController::FindPassword);
}

void NavRootViewController::pushFindPassword(qint64 viewType)
{
    platform::NavigationController *navigation = navigationController();
    if (!navigation)
        return;
    navigation->pushViewController(new FindPasswordViewController(viewType), true);
}

void NavRootViewController::clickButtonEye()
{
    m_fieldPassword->setSecureTextEntry(!m_fieldPassword->isSecureTextEntry());
}
