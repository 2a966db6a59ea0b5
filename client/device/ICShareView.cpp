#include "device/ICShareView.h"

#include "platform/kits/ShareSDK.h"
#include "platform/ui/Hud.h"

#include <QDebug>

namespace {

struct Target
{
    const char16_t *title;
    bool oneKey;
    ShareType type;
};

// By tag - 5000. The last two have no button; their tags stay reserved.
constexpr Target Targets[] = {
        {u"微信好友", false, ShareTypeWeixiSession}, {u"微信朋友圈", false, ShareTypeWeixiTimeline},
        {u"新浪微博", true, ShareTypeSinaWeibo},     {nullptr, false, ShareTypeQQ},
        {nullptr, false, ShareTypeQQSpace},
};
constexpr int ButtonCount = 3;

ICShareView::ShareFunction &shareFunction()
{
    static ICShareView::ShareFunction function;
    return function;
}

QString emptyWhenAbsent(const QString &text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

} // namespace

ICShareView::ICShareView(QObject *parent)
    : QObject(parent)
    , m_title(QStringLiteral(""))
    , m_content(QStringLiteral(""))
    , m_imageUrl(QStringLiteral(""))
    , m_url(QStringLiteral(""))
    , m_buttonClose(new platform::Button(this))
{
    for (int index = 0; index < ButtonCount; ++index) {
        auto *button = new platform::Button(this);
        button->setTag(ButtonTagBase + index);
        button->setTitle(QString::fromUtf16(Targets[index].title));
        button->setImageName(QStringLiteral("common_share_button%1").arg(index + 1));
        connect(button, &platform::Button::clicked, this,
                [this, button] { clickButtonShare(button); });
        m_buttons.append(button);
    }
    m_buttonClose->setTitle(QStringLiteral("取消"));
    connect(m_buttonClose, &platform::Button::clicked, this, &ICShareView::hideView);
}

void ICShareView::setShareTitle(const QString &title, const QString &content,
                                const QString &imageUrl, const QString &url)
{
    m_title = emptyWhenAbsent(title);
    m_content = emptyWhenAbsent(content);
    m_imageUrl = emptyWhenAbsent(imageUrl);
    m_url = emptyWhenAbsent(url);
}

void ICShareView::showView()
{
    if (m_shown)
        return;
    m_shown = true;
    emit shownChanged();
}

void ICShareView::hideView()
{
    if (!m_shown)
        return;
    m_shown = false;
    emit shownChanged();
}

QVariantList ICShareView::buttonsForView() const
{
    QVariantList buttons;
    for (platform::Button *button : m_buttons)
        buttons.append(QVariant::fromValue(button));
    return buttons;
}

ShareContent ICShareView::buildContent() const
{
    ShareContent content = ShareSDK::content(m_content, m_content, m_imageUrl, m_title, m_url,
                                             m_content, SSPublishContentMediaTypeNews);
    content.weixinTimelineUnit = ShareContentUnit{m_content, m_title, m_url, m_imageUrl,
                                                  SSPublishContentMediaTypeNews};
    ShareContentUnit weibo;
    weibo.content = m_content;
    weibo.image = m_imageUrl;
    content.sinaWeiboUnit = weibo;
    return content;
}

bool ICShareView::requestForTag(int tag, ICShareRequest *request) const
{
    const int index = tag - ButtonTagBase;
    if (index < 0 || index >= int(std::size(Targets)))
        return false;
    const Target &target = Targets[index];
    request->oneKey = target.oneKey;
    request->type = target.type;
    request->shareList = target.oneKey ? QList<ShareType>{target.type} : QList<ShareType>();
    request->content = buildContent();
    return true;
}

void ICShareView::clickButtonShare(const platform::Button *button)
{
    ICShareRequest request;
    if (!button || !requestForTag(button->tag(), &request))
        return;
    hideView();
    if (const ShareFunction &custom = shareFunction())
        custom(request, &ICShareView::shareResult);
    else
        shareWithKit(request, &ICShareView::shareResult);
}

void ICShareView::shareWithKit(const ICShareRequest &request, const ShareResultFn &result)
{
    if (request.oneKey)
        ShareSDK::oneKeyShareContent(request.content, request.shareList, result);
    else
        ShareSDK::clientShareContent(request.content, request.type, result);
}

void ICShareView::shareResult(ShareType type, SSResponseState state, const ShareError &error,
                              bool end)
{
    Q_UNUSED(type)
    Q_UNUSED(end)
    switch (state) {
    case SSResponseStateSuccess:
        platform::Hud::shared().showSuccessWithStatus(QStringLiteral("分享成功"), true);
        break;
    case SSResponseStateFail:
        platform::Hud::shared().showErrorWithStatus(QStringLiteral("分享失败"), true);
        qInfo().noquote() << QStringLiteral("分享失败,错误码:%1,错误描述:%2")
                                     .arg(error.errorCode)
                                     .arg(error.errorDescription);
        break;
    case SSResponseStateBegin:
    case SSResponseStateCancel:
        break;
    }
}

void ICShareView::setShareFunction(ShareFunction function)
{
    shareFunction() = std::move(function);
}
