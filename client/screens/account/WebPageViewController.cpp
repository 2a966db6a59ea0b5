#include "screens/account/WebPageViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"

using platform::Hud;

WebPageViewController::WebPageViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_webView(new platform::WebView(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/WebPageView.qml")));
    connect(m_webView, &platform::WebView::webViewDidStartLoad, this,
            &WebPageViewController::webViewDidStartLoad);
    connect(m_webView, &platform::WebView::webViewDidFinishLoad, this,
            &WebPageViewController::webViewDidFinishLoad);
    connect(m_webView, &platform::WebView::didFailLoadWithError, this,
            &WebPageViewController::didFailLoadWithError);
}

void WebPageViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(screenTitle());
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void WebPageViewController::setLoadViewAction()
{
    loadPage(m_webView);
}

void WebPageViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void WebPageViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void WebPageViewController::webViewDidStartLoad()
{
    Hud::shared().showWithStatus(QStringLiteral("正在加载"));
}

void WebPageViewController::webViewDidFinishLoad()
{
    Hud::shared().dismiss();
}

void WebPageViewController::didFailLoadWithError()
{
    Hud::shared().showErrorWithStatus(QStringLiteral("加载失败"));
}
