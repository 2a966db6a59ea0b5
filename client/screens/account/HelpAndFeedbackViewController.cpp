#include "screens/account/HelpAndFeedbackViewController.h"

#include "util/AppConfig.h"

HelpAndFeedbackViewController::HelpAndFeedbackViewController(QObject *parent)
    : WebPageViewController(parent)
{ }

void HelpAndFeedbackViewController::loadPage(platform::WebView *webView)
{
    webView->loadRequest(tarvel::config::helpSiteUrl());
}
