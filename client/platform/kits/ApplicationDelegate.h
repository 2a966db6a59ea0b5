#pragma once

#include <QByteArray>
#include <QFlags>
#include <QList>
#include <QString>
#include <QUrl>
#include <QVariant>
#include <QVariantMap>

#include <functional>

namespace platform {

// What a background fetch tells the system it found.
enum class BackgroundFetchResult { NewData = 0, NoData = 1, Failed = 2 };

enum class UserNotificationType { None = 0, Badge = 1, Sound = 2, Alert = 4 };
Q_DECLARE_FLAGS(UserNotificationTypes, UserNotificationType)
Q_DECLARE_OPERATORS_FOR_FLAGS(UserNotificationTypes)

// A button of an actionable notification.
struct UserNotificationAction
{
    QString identifier;
    QString title;
    bool activatesInBackground = true;
    bool destructive = false;
    bool authenticationRequired = false;
    bool operator==(const UserNotificationAction &) const = default;
};

// Actions grouped under an identifier that a notification names; shown in the default context.
struct UserNotificationCategory
{
    QString identifier;
    QList<UserNotificationAction> actions;
    bool operator==(const UserNotificationCategory &) const = default;
};

struct UserNotificationSettings
{
    UserNotificationTypes types;
    QList<UserNotificationCategory> categories;
    bool operator==(const UserNotificationSettings &) const = default;
};

// What the system tells the app: addresses other apps open it with, its return to the front, and
// its push token.
class ApplicationDelegate
{
public:
    using FetchCompletionHandler = std::function<void(BackgroundFetchResult result)>;

    virtual ~ApplicationDelegate() = default;

    // An address another app (`sourceApplication`, a bundle id) opened the app with.
    virtual bool openURL(const QUrl &url, const QString &sourceApplication,
                         const QVariant &annotation)
            = 0;
    virtual void applicationDidBecomeActive() = 0;
    virtual void didRegisterForRemoteNotificationsWithDeviceToken(const QByteArray &deviceToken)
            = 0;
};

} // namespace platform
