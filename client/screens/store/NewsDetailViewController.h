#pragma once

#include "app/Q9FatherViewController.h"
#include "device/ICShareView.h"

#include <QPointer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

class QNetworkAccessManager;
class QNetworkReply;

// The news page. There is no embedded browser here: the page loads its fixed address to learn
// whether it can be reached and what it is called, shows that, and opens it in the browser on
// request.
class NewsDetailViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are created by C++")
    Q_PROPERTY(QUrl pageAddress READ pageAddress CONSTANT)
    Q_PROPERTY(LoadState loadState READ loadState NOTIFY loadStateChanged)
    Q_PROPERTY(QString pageTitle READ pageTitle NOTIFY loadStateChanged)
    Q_PROPERTY(ICShareView *shareView READ shareView CONSTANT)
public:
    enum LoadState { NotLoaded, Loading, Loaded, Failed };
    Q_ENUM(LoadState)

    // The public search engine's home page the news page shows.
    static QUrl defaultPageAddress();
    // Points every news page made from now on elsewhere (tests keep to loopback).
    static void setDefaultPageAddress(const QUrl &address);

    explicit NewsDetailViewController(QObject *parent = nullptr);
    ~NewsDetailViewController() override;

    QUrl pageAddress() const { return m_pageAddress; }
    LoadState loadState() const { return m_loadState; }
    // The loaded page's own title; empty until it has loaded.
    QString pageTitle() const { return m_pageTitle; }

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
    void webViewDidFinishLoad(const QByteArray &html);
    void didFailLoadWithError();
    void setLoadState(LoadState state);

    QUrl m_pageAddress;
    QNetworkAccessManager *m_webView;
    ICShareView *m_shareView;
    QPointer<QNetworkReply> m_reply;
    LoadState m_loadState = NotLoaded;
    QString m_pageTitle;
};
