#include "platform/kits/WXApi.h"

#include "platform/kits/ShareQrPrompt.h"
#include "platform/kits/WeChatPayPrompt.h"

#include <QUrlQuery>

namespace {

QString &registeredId()
{
    static QString appid;
    return appid;
}

QUrl answerURL(const QString &host, int errCode, const QString &errStr, bool withReturnKey)
{
    QUrl url;
    url.setScheme(WXApi::registeredAppId());
    url.setHost(host);
    url.setPath(QStringLiteral("/"));
    QUrlQuery query;
    if (withReturnKey)
        query.addQueryItem(QStringLiteral("returnKey"), QString());
    query.addQueryItem(QStringLiteral("ret"), QString::number(errCode));
    if (!errStr.isEmpty())
        query.addQueryItem(QStringLiteral("retstr"), errStr);
    url.setQuery(query);
    return url;
}

void readAnswer(const QUrlQuery &query, BaseResp &resp)
{
    bool ok = false;
    const int ret = query.queryItemValue(QStringLiteral("ret")).toInt(&ok);
    resp.errCode = ok ? ret : WXErrCodeCommon;
    if (query.hasQueryItem(QStringLiteral("retstr")))
        resp.errStr = query.queryItemValue(QStringLiteral("retstr"), QUrl::FullyDecoded);
}

} // namespace

bool WXApi::registerApp(const QString &appid)
{
    if (appid.isEmpty())
        return false;
    registeredId() = appid.toLower();
    return true;
}

QString WXApi::registeredAppId()
{
    return registeredId();
}

bool WXApi::isWXAppInstalled()
{
    return true; // the sandbox plays WeChat on every desktop
}

bool WXApi::sendReq(const BaseReq &req)
{
    if (registeredId().isEmpty())
        return false;
    auto &payPrompt = platform::WeChatPayPrompt::shared();
    auto &sharePrompt = platform::ShareQrPrompt::shared();
    if (payPrompt.isShown() || sharePrompt.isShown())
        return false;
    if (const auto *pay = dynamic_cast<const PayReq *>(&req))
        return payPrompt.present(*pay);
    if (const auto *share = dynamic_cast<const SendMessageToWXReq *>(&req))
        return sharePrompt.present(*share);
    return false;
}

bool WXApi::handleOpenURL(const QUrl &url, WXApiDelegate *delegate)
{
    if (registeredId().isEmpty() || url.scheme().compare(registeredId(), Qt::CaseInsensitive) != 0)
        return false;
    const QUrlQuery query(url);
    if (url.host() == QLatin1String("pay")) {
        PayResp resp;
        readAnswer(query, resp);
        resp.returnKey = query.queryItemValue(QStringLiteral("returnKey"), QUrl::FullyDecoded);
        if (delegate)
            delegate->onResp(resp);
        return true;
    }
    if (url.host() == QLatin1String("sendmessage")) {
        SendMessageToWXResp resp;
        readAnswer(query, resp);
        if (delegate)
            delegate->onResp(resp);
        return true;
    }
    return false;
}

QUrl WXApi::payAnswerURL(int errCode, const QString &errStr)
{
    return answerURL(QStringLiteral("pay"), errCode, errStr, true);
}

QUrl WXApi::shareAnswerURL(int errCode, const QString &errStr)
{
    return answerURL(QStringLiteral("sendmessage"), errCode, errStr, false);
}
