#pragma once

#include "screens/account/WebPageViewController.h"

// :config::helpSiteUrl()):The help site, from its start page.
class HelpAndFeedbackViewController : public WebPageViewController
{
    Q_OBJECT
public:
    explicit HelpAndFeedbackViewController(QObject *parent = nullptr);

protected:
    QString screenTitle() const override { return QStringLiteral("帮助与反馈"); }
    void loadPage(platform::WebView *webView) override;
};
