#include "device/ICShareView.h"

#include "platform/ui/Hud.h"

#include <QDebug>

namespace {

struct Target
{
    const char16_t *title;
    bool oneKey;
    int platformType;
};

// By tag - 5000. The last two have no button; their tags stay reserved.
constexpr Target Targets[] = {
        {u"微信好友", false, ICShareContent::WeChatSession},
        {u"微信朋友圈", false, ICShareContent::WeChatTimeline},
        {u"新浪微博", true, ICShareContent::SinaWeibo},
        {nullptr, false, ICShareContent::WeChatFavorite},
        {nullptr, false, ICShareContent::QQFriend},
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

ICShareContent ICShareView::buildContent() const
{
    ICShareContent content;
    content.text = m_content;
    content.defaultText = m_content;
    content.imageUrl = m_imageUrl;
    content.title = m_title;
    content.url = m_url;
    content.description = m_content;
    content.mediaType = ICShareContent::MediaNews;
    content.weChatTimeline = {ICShareContent::MediaNews, m_content, m_title, m_url, m_imageUrl};
    content.sinaWeibo = {m_content, m_imageUrl};
    return content;
}

bool ICShareView::requestForTag(int tag, ICShareRequest *request) const
{
    const int index = tag - ButtonTagBase;
    if (index < 0 || index >= int(std::size(Targets)))
        return false;
    const Target &target = Targets[index];
    request->oneKey = target.oneKey;
    request->platformType = target.oneKey ? 0 : target.platformType;
    request->shareList = target.oneKey ? QList<int>{target.platformType} : QList<int>();
    request->content = buildContent();
    request->statusBarTips = true;
    return true;
}

void ICShareView::clickButtonShare(const platform::Button *button)
{
    ICShareRequest request;
    if (!button || !requestForTag(button->tag(), &request))
        return;
    hideView();
    const ShareFunction &custom = shareFunction();
    if (custom)
        custom(request, &ICShareView::showResult);
    else
        shareWithKit(request, &ICShareView::showResult);
}

void ICShareView::showResult(const ICShareResult &result)
{
    switch (result.state) {
    case ICShareResult::Success:
        platform::Hud::shared().showSuccessWithStatus(QStringLiteral("分享成功"), true);
        break;
    case ICShareResult::Fail:
        platform::Hud::shared().showErrorWithStatus(QStringLiteral("分享失败"), true);
        qInfo().noquote() << QStringLiteral("分享失败,错误码:%1,错误描述:%2")
                                     .arg(result.errorCode)
                                     .arg(result.errorDescription);
        break;
    case ICShareResult::Begin:
    case ICShareResult::Cancel:
        break;
    }
}

void ICShareView::setShareFunction(ShareFunction function)
{
    shareFunction() = std::move(function);
}
