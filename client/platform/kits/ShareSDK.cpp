#include "platform/kits/ShareSDK.h"

#include "platform/kits/KitStorage.h"
#include "platform/kits/ShareSession.h"
#include "platform/kits/WXApi.h"

#include <QMap>
#include <QTimer>
#include <QUrlQuery>
#include <QtEndian>

namespace {

struct Registration
{
    QString appKey;
    QMap<int, ShareSDK::Connection> connections; // by ShareTypeSinaWeibo / ShareTypeWeixiSession
    ShareSDK::UserInfoProvider userInfoProvider;
};

Registration &registration()
{
    static Registration state;
    return state;
}

// WeChat's chat and moments share one connection.
int connectionKey(ShareType type)
{
    return type == ShareTypeWeixiTimeline ? int(ShareTypeWeixiSession) : int(type);
}

// Hands WeChat's answers on and settles the share that waits for one.
class ShareAnswerRelay : public WXApiDelegate
{
public:
    explicit ShareAnswerRelay(WXApiDelegate *next)
        : m_next(next)
    { }

    void onResp(const BaseResp &resp) override
    {
        if (m_next)
            m_next->onResp(resp);
        const auto *share = dynamic_cast<const SendMessageToWXResp *>(&resp);
        if (share && ShareSession::waitingForWeChat())
            ShareSession::waitingForWeChat()->settleWeChat(*share);
    }

private:
    WXApiDelegate *m_next;
};

void answerUserInfo(ShareType type, const UserInfoResultFn &result)
{
    if (!result)
        return;
    if (!ShareSDK::isConnected(type)) {
        result(false, {}, {ShareErrorPlatformNotConnected, QStringLiteral("尚未配置该分享平台")});
        return;
    }
    const bool weChat = connectionKey(type) == ShareTypeWeixiSession;
    ShareUser user;
    user.type = type;
    user.uid = ShareSDK::sandboxUid(type);
    user.nickname = weChat ? QStringLiteral("微信用户") : QStringLiteral("微博用户");
    result(true, user, {});
}

} // namespace

void ShareSDK::registerApp(const QString &appKey)
{
    registration().appKey = appKey;
}

QString ShareSDK::appKey()
{
    return registration().appKey;
}

void ShareSDK::connectSinaWeiboWithAppKey(const QString &appKey, const QString &appSecret,
                                          const QString &redirectUri)
{
    registration().connections.insert(ShareTypeSinaWeibo, {appKey, appSecret, redirectUri});
}

void ShareSDK::connectWeChatWithAppId(const QString &appId, const QString &appSecret)
{
    registration().connections.insert(ShareTypeWeixiSession, {appId, appSecret, QString()});
    WXApi::registerApp(appId);
}

bool ShareSDK::isConnected(ShareType type)
{
    return !registration().appKey.isEmpty()
           && registration().connections.contains(connectionKey(type));
}

std::optional<ShareSDK::Connection> ShareSDK::connection(ShareType type)
{
    const auto &connections = registration().connections;
    const auto found = connections.constFind(connectionKey(type));
    if (found == connections.cend())
        return std::nullopt;
    return *found;
}

ShareContent ShareSDK::content(const QString &content, const QString &defaultContent,
                               const QString &image, const QString &title, const QString &url,
                               const QString &description, SSPublishContentMediaType mediaType)
{
    ShareContent made;
    made.content = content;
    made.defaultContent = defaultContent;
    made.image = image;
    made.title = title;
    made.url = url;
    made.description = description;
    made.mediaType = mediaType;
    return made;
}

void ShareSDK::getUserInfoWithType(ShareType type, const UserInfoResultFn &result)
{
    QTimer::singleShot(0, [type, result, provider = registration().userInfoProvider] {
        if (provider)
            provider(type, result);
        else
            answerUserInfo(type, result);
    });
}

void ShareSDK::setUserInfoProvider(UserInfoProvider provider)
{
    registration().userInfoProvider = std::move(provider);
}

QString ShareSDK::sandboxUid(ShareType type)
{
    const auto found = connection(type);
    const QString appKey = found ? found->appKey : QString();
    const QByteArray key = platform::KitStorage::deviceKey(
            QStringLiteral("share:%1:%2").arg(connectionKey(type)).arg(appKey));
    if (connectionKey(type) == ShareTypeWeixiSession) // WeChat's open ids: "o" and 27 more
        return QLatin1Char('o')
               + QString::fromLatin1(key.toBase64(QByteArray::Base64UrlEncoding
                                                  | QByteArray::OmitTrailingEquals))
                         .left(27);
    return QString::number(quint64(qFromBigEndian<quint32>(key.constData())) + 1000000000ULL);
}

void ShareSDK::clientShareContent(const ShareContent &content, ShareType type,
                                  const ShareResultFn &result)
{
    oneKeyShareContent(content, {type}, result);
}

void ShareSDK::oneKeyShareContent(const ShareContent &content, const QList<ShareType> &shareList,
                                  const ShareResultFn &result)
{
    (new ShareSession(content, shareList, result))->start();
}

bool ShareSDK::handleOpenURL(const QUrl &url, WXApiDelegate *wxDelegate)
{
    const QString scheme = url.scheme().toLower();
    if (!WXApi::registeredAppId().isEmpty() && scheme == WXApi::registeredAppId()) {
        ShareAnswerRelay relay(wxDelegate);
        return WXApi::handleOpenURL(url, &relay);
    }
    // Weibo's answers (after an authorisation) carry nothing the desktop shares wait for.
    const auto weibo = connection(ShareTypeSinaWeibo);
    return weibo && scheme == QStringLiteral("wb") + weibo->appKey;
}

bool ShareSDK::handleOpenURL(const QUrl &url, const QString &sourceApplication,
                             const QVariant &annotation, WXApiDelegate *wxDelegate)
{
    Q_UNUSED(sourceApplication)
    Q_UNUSED(annotation)
    return handleOpenURL(url, wxDelegate);
}

QUrl ShareSDK::sinaWeiboShareURL(const ShareContent &content)
{
    const auto &unit = content.sinaWeiboUnit;
    const QString text = unit && !unit->content.isEmpty() ? unit->content : content.content;
    const QString picture = unit && !unit->image.isEmpty() ? unit->image : content.image;
    const QString page = unit && !unit->url.isEmpty() ? unit->url : content.url;
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("url"), page);
    query.addQueryItem(QStringLiteral("title"), text);
    if (!picture.isEmpty())
        query.addQueryItem(QStringLiteral("pic"), picture);
    if (const auto weibo = connection(ShareTypeSinaWeibo))
        query.addQueryItem(QStringLiteral("appkey"), weibo->appKey);
    query.addQueryItem(QStringLiteral("language"), QStringLiteral("zh_cn"));
    QUrl url(QStringLiteral("https://service.weibo.com/share/share.php"));
    url.setQuery(query);
    return url;
}
