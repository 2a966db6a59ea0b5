#include "screens/account/AboutTarvelViewController.h"

#include "screens/account/PlaceholderWebPage.h"

AboutTarvelViewController::AboutTarvelViewController(QObject *parent)
    : WebPageViewController(parent)
{ }

void AboutTarvelViewController::loadPage(platform::WebView *webView)
{
    webView->loadHTMLString(PlaceholderWebPage::html());
}
