#include "platform/kits/ShareSession.h"

#include "platform/kits/Application.h"
#include "platform/kits/ShareSDK.h"
#include "platform/kits/WXApi.h"
#include "platform/ui/UrlOpener.h"

#include <QPointer>

namespace {
QPointer<ShareSession> s_waiting;

ShareError notConnected()
{
    return {ShareErrorPlatformNotConnected, QStringLiteral("尚未配置该分享平台")};
}

template<class T>
T unitOr(const std::optional<ShareContentUnit> &unit, T ShareContentUnit::*field, const T &fallback)
{
    return unit && !((*unit).*field).isEmpty() ? (*unit).*field : fallback;
}
} // namespace

ShareSession::ShareSession(const ShareContent &content, const QList<ShareType> &targets,
                           const ShareResultFn &result)
    : m_content(content)
    , m_targets(targets)
    , m_result(result)
{
    connect(&platform::Application::shared(), &platform::Application::didBecomeActive, this,
            &ShareSession::abandonWeChatIfWaiting);
}

ShareSession *ShareSession::waitingForWeChat()
{
    return s_waiting;
}

void ShareSession::start()
{
    shareNext();
}

void ShareSession::shareNext()
{
    if (++m_index >= m_targets.size()) {
        deleteLater();
        return;
    }
    const ShareType type = m_targets.at(m_index);
    if (m_result)
        m_result(type, SSResponseStateBegin, {}, false);
    if (!ShareSDK::isConnected(type))
        report(SSResponseStateFail, notConnected());
    else if (type == ShareTypeSinaWeibo)
        shareToWeibo();
    else if (type == ShareTypeWeixiSession || type == ShareTypeWeixiTimeline)
        shareToWeChat(type);
    else
        report(SSResponseStateFail, notConnected());
}

void ShareSession::shareToWeibo()
{
    if (platform::UrlOpener::shared().openURL(ShareSDK::sinaWeiboShareURL(m_content)))
        report(SSResponseStateSuccess);
    else
        report(SSResponseStateFail,
               {ShareErrorBrowserUnavailable, QStringLiteral("无法打开浏览器，请稍后再试")});
}

void ShareSession::shareToWeChat(ShareType type)
{
    const bool timeline = type == ShareTypeWeixiTimeline;
    const auto &unit = timeline ? m_content.weixinTimelineUnit : std::nullopt;
    SendMessageToWXReq req;
    req.scene = timeline ? WXSceneTimeline : WXSceneSession;
    req.title = unitOr(unit, &ShareContentUnit::title, m_content.title);
    req.description
            = unitOr(unit, &ShareContentUnit::content,
                     m_content.description.isEmpty() ? m_content.content : m_content.description);
    req.thumbImageUrl = unitOr(unit, &ShareContentUnit::image, m_content.image);
    req.webpageUrl = unitOr(unit, &ShareContentUnit::url, m_content.url);
    if (s_waiting || !WXApi::sendReq(req)) {
        report(SSResponseStateFail,
               {ShareErrorClientBusy, QStringLiteral("微信暂时无法分享，请稍后再试")});
        return;
    }
    m_waitingForWeChat = true;
    s_waiting = this;
}

void ShareSession::settleWeChat(const SendMessageToWXResp &resp)
{
    if (!m_waitingForWeChat)
        return;
    m_waitingForWeChat = false;
    s_waiting = nullptr;
    if (resp.errCode == WXSuccess)
        report(SSResponseStateSuccess);
    else if (resp.errCode == WXErrCodeUserCancel)
        report(SSResponseStateCancel);
    else
        report(SSResponseStateFail, {resp.errCode, resp.errStr});
}

void ShareSession::abandonWeChatIfWaiting()
{
    if (!m_waitingForWeChat)
        return;
    SendMessageToWXResp cancelled;
    cancelled.errCode = WXErrCodeUserCancel;
    settleWeChat(cancelled);
}

void ShareSession::report(SSResponseState state, const ShareError &error)
{
    const bool last = m_index + 1 >= m_targets.size();
    if (m_result)
        m_result(m_targets.at(m_index), state, error, last);
    shareNext();
}
