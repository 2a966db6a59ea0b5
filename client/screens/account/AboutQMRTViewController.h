#pragma once

#include "screens/account/WebPageViewController.h"

// A page about the company that has no content yet; the about screen does not open it.
class AboutQMRTViewController : public WebPageViewController
{
    Q_OBJECT
public:
    explicit AboutQMRTViewController(QObject *parent = nullptr);

protected:
    QString screenTitle() const override { return QStringLiteral("关于QMRT"); }
    void loadPage(platform::WebView *webView) override;
};
