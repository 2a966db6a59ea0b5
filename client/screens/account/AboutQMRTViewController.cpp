#include "screens/account/AboutQMRTViewController.h"

#include "screens/account/PlaceholderWebPage.h"

AboutQMRTViewController::AboutQMRTViewController(QObject *parent)
    : WebPageViewController(parent)
{ }

void AboutQMRTViewController::loadPage(platform::WebView *webView)
{
    webView->loadHTMLString(PlaceholderWebPage::html());
}
