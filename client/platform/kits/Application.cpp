#include "platform/kits/Application.h"

#include "platform/kits/KitStorage.h"

#include <QJSEngine>
#include <QTimer>

namespace platform {

Application::Application()
{
    m_firstFrameGrace.setSingleShot(true);
    m_firstFrameGrace.setInterval(FirstFrameGraceMs);
    connect(&m_firstFrameGrace, &QTimer::timeout, this, &Application::firstFrameShown);
}

Application &Application::shared()
{
    static Application application;
    return application;
}

Application *Application::create(QQmlEngine *, QJSEngine *)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
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
    afterFirstFrame(this, [this] { deliverDeviceToken(); });
}

void Application::registerForRemoteNotificationTypes(UserNotificationTypes types)
{
    m_remoteTypes = types;
    m_registeredForRemote = true;
    afterFirstFrame(this, [this] { deliverDeviceToken(); });
}

void Application::afterFirstFrame(QObject *context, std::function<void()> work)
{
    if (m_waitingForFirstFrame) {
        m_afterFirstFrame.append({context, std::move(work)});
        return;
    }
    QTimer::singleShot(0, context, std::move(work));
}

void Application::expectFirstFrame()
{
    m_firstFrameGrace.start();
    if (m_waitingForFirstFrame)
        return;
    m_waitingForFirstFrame = true;
    emit waitingForFirstFrameChanged();
}

void Application::firstFrameShown()
{
    m_firstFrameGrace.stop();
    if (m_waitingForFirstFrame) {
        m_waitingForFirstFrame = false;
        emit waitingForFirstFrameChanged();
    }
    // Still one pass later, in the order asked, so the frame is out before the work starts.
    for (Deferred &deferred : std::exchange(m_afterFirstFrame, {})) {
        if (deferred.context)
            QTimer::singleShot(0, deferred.context.data(), std::move(deferred.work));
    }
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
