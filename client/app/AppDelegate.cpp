#include "app/AppDelegate.h"

#include "platform/UserDefaults.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/Window.h"

namespace {
const QString IsCountdownKey = QStringLiteral("isCountdown");
}

AppDelegate *AppDelegate::shared()
{
    static AppDelegate *delegate = new AppDelegate;
    return delegate;
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

void AppDelegate::setUserLogin(const std::optional<Object_User> &user)
{
    m_userLogin = user;
    emit userLoginChanged();
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
