#include "platform/kits/ShareQrPrompt.h"

#include "platform/kits/Application.h"
#include "platform/kits/WXApi.h"

#include <QJSEngine>

namespace platform {

ShareQrPrompt &ShareQrPrompt::shared()
{
    static ShareQrPrompt prompt;
    return prompt;
}

ShareQrPrompt *ShareQrPrompt::create(QQmlEngine *, QJSEngine *)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

bool ShareQrPrompt::present(const SendMessageToWXReq &req)
{
    if (m_shown)
        return false;
    m_request = req;
    m_shown = true;
    Application::shared().beginCovering();
    emit changed();
    return true;
}

QString ShareQrPrompt::title() const
{
    return m_request.scene == WXSceneTimeline ? QStringLiteral("分享到微信朋友圈")
                                              : QStringLiteral("分享到微信好友");
}

QString ShareQrPrompt::code() const
{
    return m_request.webpageUrl.isEmpty() ? m_request.description : m_request.webpageUrl;
}

QString ShareQrPrompt::detail() const
{
    return m_request.scene == WXSceneTimeline
                   ? QStringLiteral("在手机上打开页面后，点击右上角分享到朋友圈")
                   : QStringLiteral("在手机上打开页面后，点击右上角发送给朋友");
}

void ShareQrPrompt::done()
{
    finish(WXSuccess);
}

void ShareQrPrompt::cancel()
{
    finish(WXErrCodeUserCancel);
}

void ShareQrPrompt::finish(int errCode)
{
    if (!m_shown)
        return;
    m_shown = false;
    emit changed();
    Application::shared().openURL(WXApi::shareAnswerURL(errCode), WXApi::sourceApplication());
    Application::shared().endCovering();
}

} // namespace platform
