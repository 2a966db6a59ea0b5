#pragma once

#include "app/Q9FatherViewController.h"
#include "platform/ui/WebView.h"

#include <QtQml/qqmlregistration.h>

// A screen that is one full-screen web page under the bar, with the back item: "正在加载" while
// the page loads, gone when it has, "加载失败" when it cannot be had. Subclasses name the screen
// and say what to load.
class WebPageViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are created by C++")
    Q_PROPERTY(platform::WebView *webView READ webView CONSTANT)
public:
    explicit WebPageViewController(QObject *parent = nullptr);

    platform::WebView *webView() const { return m_webView; }

protected:
    void viewDidLoad() override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

    virtual QString screenTitle() const = 0;
    // Points the web view at the screen's page.
    virtual void loadPage(platform::WebView *webView) = 0;

private:
    void webViewDidStartLoad();
    void webViewDidFinishLoad();
    void didFailLoadWithError();

    platform::WebView *m_webView;
};
