#include "app/AppDelegate.h"

#include "app/ViewController.h"
#include "platform/UserDefaults.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TabBarController.h"
#include "platform/ui/Window.h"
#include "service/ICCookiesHelper.h"
#include "service/OwnedGames.h"

#include <QGuiApplication>
#include <QJSEngine>

namespace {
const QString IsCountdownKey = QStringLiteral("isCountdown");
}

AppDelegate *AppDelegate::shared()
{
    static AppDelegate *delegate = new AppDelegate;
    return delegate;
}

AppDelegate *AppDelegate::create(QQmlEngine *, QJSEngine *)
{
    QJSEngine::setObjectOwnership(shared(), QJSEngine::CppOwnership);
    return shared();
}

AppDelegate::AppDelegate()
    : m_window(new platform::Window(this))
{
    ApplicationState::install(this);
}

AppDelegate::~AppDelegate()
{
    ApplicationState::install(nullptr);
}

bool AppDelegate::application_didFinishLaunchingWithOptions(const QVariantMap &launchOptions)
{
    m_window->makeKeyAndVisible();
    initWithMainController();
    initWithShareSDK();
    initWithGeTui(launchOptions);
    return true;
}

void AppDelegate::initWithMainController()
{
    if (m_statusBarStyle != StatusBarStyleLightContent) {
        m_statusBarStyle = StatusBarStyleLightContent;
        emit statusBarStyleChanged();
    }
    m_window->setRootViewController(new ViewController);
    connect(&platform::UserDefaults::standard(), &platform::UserDefaults::valueChanged, this,
            &AppDelegate::observeValueForKeyPath, Qt::UniqueConnection);
    auto &defaults = platform::UserDefaults::standard();
    defaults.setObject(false, IsCountdownKey);
    defaults.synchronize();
    setCountdown(CountdownSeconds);
}

void AppDelegate::observeValueForKeyPath(const QString &keyPath, const QVariant &oldValue,
                                         const QVariant &newValue)
{
    Q_UNUSED(oldValue)
    if (keyPath == ICCookiesHelper::cartNumKey)
        showCartNumOnBadge(newValue);
}

void AppDelegate::showCartNumOnBadge(const QVariant &value)
{
    if (!m_labelRedDot)
        return;
    const QString text = value.toString();
    m_labelRedDot->setText(text);
    m_labelRedDot->setHidden(text.isEmpty() || text == QLatin1String("0"));
}

void AppDelegate::followApplicationState(QGuiApplication *application)
{
    connect(application, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive)
                    applicationDidBecomeActive();
                else if (state == Qt::ApplicationHidden || state == Qt::ApplicationSuspended)
                    applicationDidEnterBackground();
            });
}

platform::ViewController *AppDelegate::visibleViewController() const
{
    platform::ViewController *current = m_window->topViewController();
    while (current) {
        platform::ViewController *inner = nullptr;
        if (auto *stack = qobject_cast<platform::NavigationController *>(current))
            inner = stack->topViewController();
        else if (auto *tabs = qobject_cast<platform::TabBarController *>(current))
            inner = tabs->selectedViewController();
        if (!inner)
            return current;
        current = inner;
    }
    return nullptr;
}

bool AppDelegate::setTags(const QStringList &tags, QString *error)
{
    m_pushTags = tags;
    return m_tagsSender ? m_tagsSender(tags, error) : true;
}

void AppDelegate::setTagsSender(TagsSender sender)
{
    m_tagsSender = std::move(sender);
    if (m_tagsSender && !m_pushTags.isEmpty())
        m_tagsSender(m_pushTags, nullptr);
}

void AppDelegate::setUserLogin(const std::optional<Object_User> &user)
{
    const bool anotherUser = user && (!m_userLogin || m_userLogin->account_id != user->account_id);
    m_userLogin = user;
    emit userLoginChanged();
    if (!user)
        OwnedGames::shared().clear();
    else if (anotherUser)
        // Queued: a remembered sign-in puts its cookies back only after setting the user.
        QTimer::singleShot(0, this, [] { OwnedGames::shared().refresh(); });
}

void AppDelegate::setLabelRedDot(platform::Label *label)
{
    if (m_labelRedDot == label)
        return;
    m_labelRedDot = label;
    emit labelRedDotChanged();
}

void AppDelegate::setCountdown(int seconds)
{
    if (m_countdown == seconds)
        return;
    m_countdown = seconds;
    emit countdownChanged();
}

void AppDelegate::setButtonIsEnable(platform::Button *button)
{
    m_buttonAuthCode = button;
    if (button)
        button->setEnabled(m_countdown == CountdownSeconds || m_countdown == 0);
}

void AppDelegate::setTimerStart()
{
    auto &defaults = platform::UserDefaults::standard();
    defaults.setObject(true, IsCountdownKey);
    defaults.synchronize();
    if (m_timer) {
        m_timer->stop();
        m_timer->deleteLater();
    }
    m_timer = new QTimer(this);
    m_timer->setInterval(m_tickInterval);
    connect(m_timer, &QTimer::timeout, this, &AppDelegate::TimerCountdown);
    m_timer->start();
    if (m_buttonAuthCode)
        m_buttonAuthCode->setEnabled(false);
}

void AppDelegate::TimerCountdown()
{
    setCountdown(m_countdown - 1);
    if (m_buttonAuthCode) {
        m_buttonAuthCode->setEnabled(false);
        m_buttonAuthCode->setTitle(QStringLiteral("%1S").arg(m_countdown));
    }
    if (m_countdown != 0)
        return;
    auto &defaults = platform::UserDefaults::standard();
    defaults.setObject(false, IsCountdownKey);
    defaults.synchronize();
    if (m_timer) {
        m_timer->stop();
        m_timer->deleteLater();
        m_timer = nullptr;
    }
    setCountdown(CountdownSeconds);
    if (m_buttonAuthCode) {
        m_buttonAuthCode->setEnabled(true);
        m_buttonAuthCode->setTitle(QStringLiteral("获取验证码"));
    }
}
