#include "app/AppDelegate.h"

#include "platform/UserDefaults.h"
#include "platform/kits/Application.h"
#include "platform/kits/GeTuiSdk.h"
#include "platform/kits/KitCredentials.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TabBarController.h"
#include "platform/ui/Window.h"
#include "service/ICDataHelper.h"
#include "util/ObjectDescription.h"

#include <QDateTime>
#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>

// Push registration and the messages that arrive, kept in GTMessage.plist for the message list.

namespace {

const QString MessagesFile = QStringLiteral("GTMessage.plist");
const QString FormatErrorText = QStringLiteral("推送消息格式错误,获取失败,请联系客服");

// How the platform prints a date.
QString dateDescription(const QDateTime &date)
{
    return date.toUTC().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QStringLiteral(" +0000");
}

QString textOf(const QJsonValue &value)
{
    return value.isString() ? value.toString() : objectDescription(value.toVariant());
}

// The message record of a payload: "title", "content", "date" and "url" in that order, ending
// at the first one missing. A payload that is no JSON gives an empty record; one whose JSON is
// not a dictionary gives none.
std::optional<QVariantMap> messageRecord(const QByteArray &payload)
{
    const QJsonDocument document = QJsonDocument::fromJson(payload);
    if (document.isArray())
        return std::nullopt;
    QVariantMap record;
    const QJsonObject message = document.object();
    for (const QString &key : {QStringLiteral("title"), QStringLiteral("content"),
                               QStringLiteral("date"), QStringLiteral("url")}) {
        const QJsonValue value = message.value(key);
        if (value.isUndefined() || value.isNull())
            break;
        record.insert(key, textOf(value));
    }
    return record;
}

} // namespace

void AppDelegate::initWithGeTui(const QVariantMap &launchOptions)
{
    using namespace tarvel::kits;
    kitsBridge();
    startSdkWith(QString::fromLatin1(GeTuiAppId), QString::fromLatin1(GeTuiAppKey),
                 QString::fromLatin1(GeTuiAppSecret));
    setTagsSender([](const QStringList &tags, QString *error) {
        const bool set = GeTuiSdk::setTags(tags);
        if (!set && error)
            *error = QStringLiteral("推送服务尚未启动，无法设置标签");
        return set;
    });
    registerRemoteNotification();

    const QVariant notification = launchOptions.value(LaunchOptionsRemoteNotificationKey);
    if (notification.isValid()) {
        const QVariant payload = notification.toMap().value(QStringLiteral("payload"));
        const QString now = dateDescription(QDateTime::currentDateTimeUtc());
        qInfo().noquote() << QStringLiteral("[APN]%1,%2").arg(now, objectDescription(payload));
        qInfo().noquote() << QStringLiteral("%1,%2").arg(now, objectDescription(payload));
        didReceiveRemoteNotification(notification.toMap());
    }

    const QVariant isPush
            = platform::UserDefaults::standard().objectForKey(QStringLiteral("isPush"));
    GeTuiSdk::setPushModeForOff(isPush.toString() == QLatin1String("0"));
}

void AppDelegate::startSdkWith(const QString &appID, const QString &appKey,
                               const QString &appSecret)
{
    m_appID = appID;
    m_appKey = appKey;
    m_appSecret = appSecret;
    QString error;
    if (!GeTuiSdk::startSdkWithAppId(appID, appKey, appSecret, pushDelegate(), &error)) {
        qWarning().noquote() << QStringLiteral("推送服务未能启动：") + error;
        return;
    }
    GeTuiSdk::runBackgroundEnable(true);
    GeTuiSdk::lbsLocationEnable(true, true);
}

void AppDelegate::stopSdk()
{
    GeTuiSdk::stopSdk();
}

void AppDelegate::setDeviceToken(const QString &token)
{
    GeTuiSdk::registerDeviceToken(token);
}

QString AppDelegate::sendMessage(const QByteArray &body, QString *error)
{
    return GeTuiSdk::sendMessage(body, error);
}

void AppDelegate::registerRemoteNotification()
{
    using platform::UserNotificationType;
    auto &application = platform::Application::shared();
    const platform::UserNotificationTypes types = UserNotificationType::Badge
                                                  | UserNotificationType::Sound
                                                  | UserNotificationType::Alert;
    if (!application.supportsUserNotificationSettings()) {
        application.registerForRemoteNotificationTypes(types);
        return;
    }
    const platform::UserNotificationAction cancel{QStringLiteral("ACTION_ONE"),
                                                  QStringLiteral("取消")};
    const platform::UserNotificationAction reply{QStringLiteral("ACTION_TWO"),
                                                 QStringLiteral("回复")};
    const platform::UserNotificationCategory actionable{QStringLiteral("ACTIONABLE"),
                                                        {cancel, reply}};
    application.registerForRemoteNotifications();
    application.registerUserNotificationSettings({types, {actionable}});
}

void AppDelegate::didRegisterForRemoteNotificationsWithDeviceToken(const QByteArray &deviceToken)
{
    QString token = objectDescription(QVariant(deviceToken));
    while (token.startsWith(QLatin1Char('<')) || token.startsWith(QLatin1Char('>')))
        token.remove(0, 1);
    while (token.endsWith(QLatin1Char('<')) || token.endsWith(QLatin1Char('>')))
        token.chop(1);
    token.remove(QLatin1Char(' '));
    m_deviceToken = token;
    qInfo().noquote() << QStringLiteral("deviceToken:%1").arg(token);
    GeTuiSdk::registerDeviceToken(token);
}

void AppDelegate::didReceiveRemoteNotification(const QVariantMap &userInfo)
{
    const QVariant payload = userInfo.value(QStringLiteral("payload"));
    if (!payload.isValid() || payload.isNull())
        return;
    if (payload.typeId() != QMetaType::QString && payload.typeId() != QMetaType::QByteArray) {
        platform::Hud::shared().showErrorWithStatus(FormatErrorText);
        return;
    }
    receivePushPayload(payload.toByteArray());
}

void AppDelegate::didReceiveRemoteNotification(const QVariantMap &userInfo,
                                               const FetchCompletionHandler &completionHandler)
{
    const QVariantMap aps = userInfo.value(QStringLiteral("aps")).toMap();
    if (aps.contains(QStringLiteral("content-available"))
        && userInfo.contains(QStringLiteral("payload")))
        didReceiveRemoteNotification(userInfo);
    if (completionHandler)
        completionHandler(platform::BackgroundFetchResult::NewData);
}

void AppDelegate::GeTuiSdkDidRegisterClient(const QString &clientId)
{
    m_clientId = clientId;
    if (!m_deviceToken.isEmpty())
        GeTuiSdk::registerDeviceToken(m_deviceToken);
}

void AppDelegate::GeTuiSdkDidReceivePayload(const QString &payloadId, const QString &taskId,
                                            const QString &msgId, const QString &appId)
{
    Q_UNUSED(taskId)
    Q_UNUSED(msgId)
    Q_UNUSED(appId)
    m_payloadId = payloadId;
    ++m_lastPayloadIndex;
    const QByteArray payload = GeTuiSdk::retrivePayloadById(payloadId);
    receivePushPayload(payload.isNull() ? std::nullopt : std::optional<QByteArray>(payload));
}

void AppDelegate::GeTuiSdkDidSendMessage(const QString &messageId, int result)
{
    qInfo().noquote()
            << QStringLiteral("Received sendmessage:%1 result:%2").arg(messageId).arg(result);
}

void AppDelegate::GeTuiSDkDidNotifySdkState(SdkStatus status)
{
    m_sdkStatus = status;
}

void AppDelegate::receivePushPayload(const std::optional<QByteArray> &payload)
{
    if (!payload)
        return;
    const std::optional<QVariantMap> record = messageRecord(*payload);
    if (!record) {
        platform::Hud::shared().showErrorWithStatus(FormatErrorText);
        return;
    }
    ICDataHelper::DataSaveDictWith(*record, MessagesFile);
    refreshTopScreen();
}

// An open message list (the top screen of the last tab) reloads.
void AppDelegate::refreshTopScreen()
{
    auto *tabs = qobject_cast<platform::TabBarController *>(window()->rootViewController());
    if (!tabs || tabs->count() == 0)
        return;
    platform::ViewController *last = tabs->viewControllers().constLast();
    auto *stack = qobject_cast<platform::NavigationController *>(last);
    QObject *top = stack ? stack->topViewController() : nullptr;
    if (top && top->metaObject()->indexOfMethod("refreshData()") >= 0)
        QMetaObject::invokeMethod(top, "refreshData");
}
