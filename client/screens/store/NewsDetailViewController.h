#pragma once

#include "app/Q9FatherViewController.h"
#include "device/ICShareView.h"
#include "platform/ui/WebView.h"

#include <QUrl>
#include <QtQml/qqmlregistration.h>

// The news page: its fixed address in the web view. A page that cannot be loaded leaves the
// screen blank.
class NewsDetailViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are created by C++")
    Q_PROPERTY(QUrl pageAddress READ pageAddress CONSTANT)
    Q_PROPERTY(LoadState loadState READ loadState NOTIFY loadStateChanged)
    Q_PROPERTY(QString pageTitle READ pageTitle NOTIFY loadStateChanged)
    Q_PROPERTY(ICShareView *shareView READ shareView CONSTANT)
    Q_PROPERTY(platform::WebView *webView READ webView CONSTANT)
public:
    // As the web view's states.
    enum LoadState { NotLoaded, Loading, Loaded, Failed };
    Q_ENUM(LoadState)

    // The public search engine's home page the news page shows.
    static QUrl defaultPageAddress();
    // Points every news page made from now on elsewhere (tests keep to loopback).
    static void setDefaultPageAddress(const QUrl &address);

    explicit NewsDetailViewController(QObject *parent = nullptr);

    QUrl pageAddress() const { return m_pageAddress; }
    LoadState loadState() const { return LoadState(m_webView->loadState()); }
    // The loaded page's own title; empty until it has loaded.
    QString pageTitle() const { return m_webView->title(); }
    platform::WebView *webView() const { return m_webView; }

    // Loads the page (again).
    Q_INVOKABLE void loadRequest();
    Q_INVOKABLE void openInBrowser();

    // The share panel; the share button fills and shows it.
    ICShareView *shareView() const { return m_shareView; }

signals:
    void loadStateChanged();

protected:
    void viewDidLoad() override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;
    void setNavRightAction() override;

private:
    void webViewDidStartLoad();
    void webViewDidFinishLoad();
    void didFailLoadWithError();

    QUrl m_pageAddress;
    platform::WebView *m_webView;
    ICShareView *m_shareView;
};
