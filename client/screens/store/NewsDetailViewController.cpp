#include "screens/store/NewsDetailViewController.h"

#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/UrlOpener.h"

namespace {

QUrl &pageAddressForNewPages()
{
    static QUrl address(QStringLiteral("https://www.baidu.com/"));
    return address;
}

} // namespace

QUrl NewsDetailViewController::defaultPageAddress()
{
    return pageAddressForNewPages();
}

void NewsDetailViewController::setDefaultPageAddress(const QUrl &address)
{
    pageAddressForNewPages() = address;
}

NewsDetailViewController::NewsDetailViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_pageAddress(defaultPageAddress())
    , m_webView(new platform::WebView(this))
    , m_shareView(new ICShareView(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/store/NewsDetailView.qml")));
    connect(m_webView, &platform::WebView::webViewDidStartLoad, this,
            &NewsDetailViewController::webViewDidStartLoad);
    connect(m_webView, &platform::WebView::webViewDidFinishLoad, this,
            &NewsDetailViewController::webViewDidFinishLoad);
    connect(m_webView, &platform::WebView::didFailLoadWithError, this,
            &NewsDetailViewController::didFailLoadWithError);
    connect(m_webView, &platform::WebView::loadStateChanged, this,
            &NewsDetailViewController::loadStateChanged);
}

void NewsDetailViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("资讯详情"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBackBlack"), QString());
    setNavRightDefaultItemWithImageIcon(QStringLiteral("common_share"), QString());
}

void NewsDetailViewController::setLoadViewAction()
{
    loadRequest();
}

void NewsDetailViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void NewsDetailViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void NewsDetailViewController::setNavRightAction()
{
    // "咨询公告" is written so on purpose, unlike the list's title.
    m_shareView->setShareTitle(QStringLiteral("咨询公告"), QStringLiteral("内容"), QString(),
                               m_pageAddress.toString());
    m_shareView->showView();
}

void NewsDetailViewController::loadRequest()
{
    m_webView->loadRequest(m_pageAddress);
}

void NewsDetailViewController::openInBrowser()
{
    platform::UrlOpener::shared().openURL(m_pageAddress);
}

void NewsDetailViewController::webViewDidStartLoad()
{
    platform::Hud::shared().showWithStatus(QStringLiteral("正在加载"));
}

void NewsDetailViewController::webViewDidFinishLoad()
{
    platform::Hud::shared().dismiss();
}

void NewsDetailViewController::didFailLoadWithError()
{
    platform::Hud::shared().showErrorWithStatus(QStringLiteral("加载失败"));
}
