#include "platform/kits/Application.h"

#include "platform/kits/KitStorage.h"

#include <QTimer>

namespace platform {

Application::Application() = default;

Application &Application::shared()
{
    static Application application;
    return application;
}

bool Application::openURL(const QUrl &url, const QString &sourceApplication,
                          const QVariant &annotation)
{
    return m_delegate && m_delegate->openURL(url, sourceApplication, annotation);
}

void Application::beginCovering()
{
    ++m_coverCount;
    if (m_state == Active)
        moveTo(Inactive);
}

void Application::endCovering()
{
    if (m_coverCount == 0)
        return;
    if (--m_coverCount == 0)
        moveTo(Active);
}

void Application::moveTo(State state)
{
    if (state == m_state)
        return;
    m_state = state;
    emit applicationStateChanged(state);
    if (state != Active)
        return;
    if (m_delegate)
        m_delegate->applicationDidBecomeActive();
    emit didBecomeActive();
}

void Application::setApplicationIconBadgeNumber(int number)
{
    if (number == m_badgeNumber)
        return;
    m_badgeNumber = number;
    emit applicationIconBadgeNumberChanged();
}

void Application::registerUserNotificationSettings(const UserNotificationSettings &settings)
{
    m_settings = settings;
    emit userNotificationSettingsChanged();
}

void Application::registerForRemoteNotifications()
{
    m_registeredForRemote = true;
    QTimer::singleShot(0, this, &Application::deliverDeviceToken);
}

void Application::registerForRemoteNotificationTypes(UserNotificationTypes types)
{
    m_remoteTypes = types;
    m_registeredForRemote = true;
    QTimer::singleShot(0, this, &Application::deliverDeviceToken);
}

QByteArray Application::deviceToken()
{
    return KitStorage::deviceKey(QStringLiteral("apns"));
}

void Application::deliverDeviceToken()
{
    if (m_delegate)
        m_delegate->didRegisterForRemoteNotificationsWithDeviceToken(deviceToken());
}

} // namespace platform
