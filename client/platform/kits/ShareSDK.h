#pragma once

#include "platform/kits/ShareSDKTypes.h"
#include "platform/kits/WXApiObject.h"

#include <QList>
#include <QString>
#include <QUrl>
#include <QVariant>

#include <optional>

// The sharing kit: the app registers with its key and connects the platforms it shares to (Sina
// Weibo and WeChat here). On the desktop Weibo shares go through Weibo's web share page in the
// browser and WeChat shares through WeChat's QR share sheet; the WeChat user identity is the
// sandbox's, stable for the app home.
class ShareSDK
{
public:
    ShareSDK() = delete;

    struct Connection
    {
        QString appKey; // Weibo's key or WeChat's app id
        QString appSecret;
        QString redirectUri; // Weibo only
    };

    static void registerApp(const QString &appKey);
    static QString appKey();
    static void connectSinaWeiboWithAppKey(const QString &appKey, const QString &appSecret,
                                           const QString &redirectUri);
    // Also registers the app with the WeChat kit.
    static void connectWeChatWithAppId(const QString &appId, const QString &appSecret);
    // WeChat's chat and moments come with the one WeChat connection.
    static bool isConnected(ShareType type);
    static std::optional<Connection> connection(ShareType type);

    static ShareContent content(const QString &content, const QString &defaultContent,
                                const QString &image, const QString &title, const QString &url,
                                const QString &description, SSPublishContentMediaType mediaType);

    // The user's identity at the platform; answers one pass of the main queue later.
    static void getUserInfoWithType(ShareType type, const UserInfoResultFn &result);
    using UserInfoProvider = std::function<void(ShareType type, const UserInfoResultFn &result)>;
    // Stands in for the platform's answer (tests); an empty provider brings the sandbox back.
    static void setUserInfoProvider(UserInfoProvider provider);
    // The sandbox's id of this app home's user at the platform.
    static QString sandboxUid(ShareType type);

    // Shares straight to one platform's client.
    static void clientShareContent(const ShareContent &content, ShareType type,
                                   const ShareResultFn &result);
    // Shares to each platform of the list in turn.
    static void oneKeyShareContent(const ShareContent &content, const QList<ShareType> &shareList,
                                   const ShareResultFn &result);

    // Answers of the platforms' apps: a WeChat answer goes to the WeChat kit with `wxDelegate`
    // and settles a share waiting for it. False when the address is no platform's answer.
    static bool handleOpenURL(const QUrl &url, WXApiDelegate *wxDelegate);
    static bool handleOpenURL(const QUrl &url, const QString &sourceApplication,
                              const QVariant &annotation, WXApiDelegate *wxDelegate);

    // Weibo's web share page for `content`.
    static QUrl sinaWeiboShareURL(const ShareContent &content);
};
