#pragma once

#include "screens/account/WebPageViewController.h"

// A page about the app that has no content yet; the about screen does not open it.
class AboutTarvelViewController : public WebPageViewController
{
    Q_OBJECT
public:
    explicit AboutTarvelViewController(QObject *parent = nullptr);

protected:
    QString screenTitle() const override { return QStringLiteral("关于Tarvel游戏"); }
    void loadPage(platform::WebView *webView) override;
};
