#pragma once

#include "platform/kits/ApplicationDelegate.h"

#include <QList>
#include <QObject>

class QQmlEngine;
class QJSEngine;
#include <QPointer>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace platform {

// The running app as the other apps see it: whether one of them is in front of it (inactive), the
// addresses they hand it, the number on its icon, and its registration for remote notifications.
// Everything it learns goes to the delegate.
//
// On the desktop the kits' sheets stand for the other apps (WeChat): while one covers the app it
// is inactive, and the last one leaving makes it active again. The window's own focus and
// visibility reach the delegate through the app's shell, not through here.
class Application : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(PlatformApplication)
    QML_SINGLETON
    Q_PROPERTY(bool waitingForFirstFrame READ isWaitingForFirstFrame NOTIFY
                       waitingForFirstFrameChanged)
    Q_PROPERTY(State applicationState READ applicationState NOTIFY applicationStateChanged)
    Q_PROPERTY(int applicationIconBadgeNumber READ applicationIconBadgeNumber WRITE
                       setApplicationIconBadgeNumber NOTIFY applicationIconBadgeNumberChanged)
public:
    enum State { Active, Inactive };
    Q_ENUM(State)

    static Application &shared();
    static Application *create(QQmlEngine *, QJSEngine *);

    ApplicationDelegate *delegate() const { return m_delegate; }
    // Not owned; it must outlive its time as the delegate.
    void setDelegate(ApplicationDelegate *delegate) { m_delegate = delegate; }

    State applicationState() const { return m_state; }

    // Another app opens this one with `url`; answers what the delegate answers (false without
    // a delegate).
    bool openURL(const QUrl &url, const QString &sourceApplication,
                 const QVariant &annotation = {});

    // Another app comes in front of this one, or goes away again.
    void beginCovering();
    void endCovering();
    bool isCovered() const { return m_coverCount > 0; }

    int applicationIconBadgeNumber() const { return m_badgeNumber; }
    void setApplicationIconBadgeNumber(int number);

    // Remote notifications. Registering hands the delegate this device's token, one pass of the
    // main queue later.
    bool supportsUserNotificationSettings() const { return m_supportsSettings; }
    void setSupportsUserNotificationSettings(bool supports) { m_supportsSettings = supports; }
    void registerUserNotificationSettings(const UserNotificationSettings &settings);
    UserNotificationSettings currentUserNotificationSettings() const { return m_settings; }
    void registerForRemoteNotifications();
    // The registration of systems without notification settings.
    void registerForRemoteNotificationTypes(UserNotificationTypes types);
    UserNotificationTypes enabledRemoteNotificationTypes() const { return m_remoteTypes; }
    bool isRegisteredForRemoteNotifications() const { return m_registeredForRemote; }
    // The token the system gives this device (32 bytes, stable for the app home).
    static QByteArray deviceToken();

    // Work that can wait for the window: the kits' disk and network at launch. While a window is
    // on its way to its first frame (between expectFirstFrame() and firstFrameShown()) `work`
    // waits for it, or for FirstFrameGraceMs at most; otherwise it runs one pass of the main
    // queue later. Work whose `context` is gone by then is dropped.
    void afterFirstFrame(QObject *context, std::function<void()> work);
    void expectFirstFrame();
    void firstFrameShown();
    bool isWaitingForFirstFrame() const { return m_waitingForFirstFrame; }
    static constexpr int FirstFrameGraceMs = 2000;

signals:
    void applicationStateChanged(platform::Application::State state);
    void didBecomeActive();
    void applicationIconBadgeNumberChanged();
    void userNotificationSettingsChanged();
    void waitingForFirstFrameChanged();

private:
    Application();
    void moveTo(State state);
    void deliverDeviceToken();

    ApplicationDelegate *m_delegate = nullptr;
    State m_state = Active;
    int m_coverCount = 0;
    int m_badgeNumber = 0;
    bool m_supportsSettings = true;
    UserNotificationSettings m_settings;
    UserNotificationTypes m_remoteTypes;
    bool m_registeredForRemote = false;
    struct Deferred
    {
        QPointer<QObject> context;
        std::function<void()> work;
    };
    QList<Deferred> m_afterFirstFrame;
    bool m_waitingForFirstFrame = false;
    QTimer m_firstFrameGrace;
};

} // namespace platform
