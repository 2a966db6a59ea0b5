#include "device/ICShareView.h"

#include "platform/ui/UrlOpener.h"

#include <QUrl>
#include <QUrlQuery>

// The panel's one way into the sharing kit.
void ICShareView::shareWithKit(const ICShareRequest &request, ResultFn done)
{
    if (request.oneKey && request.shareList.contains(ICShareContent::SinaWeibo)) {
        QUrl address(QStringLiteral("https://service.weibo.com/share/share.php"));
        QUrlQuery query;
        query.addQueryItem(QStringLiteral("url"), request.content.url);
        query.addQueryItem(QStringLiteral("title"), request.content.sinaWeibo.text);
        query.addQueryItem(QStringLiteral("pic"), request.content.sinaWeibo.imageUrl);
        address.setQuery(query);
        const bool opened = platform::UrlOpener::shared().openURL(address);
        done({opened ? ICShareResult::Success : ICShareResult::Fail, opened ? 0 : -1,
              opened ? QString() : QStringLiteral("无法打开浏览器")});
        return;
    }
    done({ICShareResult::Fail, -2, QStringLiteral("尚未安装微信客户端")});
}
