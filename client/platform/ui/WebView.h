#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace platform {

// A web view: what it is asked to show (an address, or an HTML text with the address its links
// are relative to) and how loading goes. The QML WebPage draws it with Qt WebView and reports the
// page's start, finish and failure back here, where the screens follow them. Nothing of the web
// engine runs until a screen holding a web view is shown and asks for a page.
class WebView : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(WebViewState)
    QML_UNCREATABLE("Web views are made by the screen controllers")
    Q_PROPERTY(QUrl url READ url NOTIFY requestChanged)
    Q_PROPERTY(QString html READ html NOTIFY requestChanged)
    Q_PROPERTY(QUrl baseUrl READ baseUrl NOTIFY requestChanged)
    Q_PROPERTY(int requestNumber READ requestNumber NOTIFY requestChanged)
    Q_PROPERTY(LoadState loadState READ loadState NOTIFY loadStateChanged)
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
public:
    enum LoadState { NotLoaded, Loading, Loaded, Failed };
    Q_ENUM(LoadState)

    explicit WebView(QObject *parent = nullptr);

    // Readies the web engine's process-wide settings without starting it; call once before the
    // application object exists. Run as root, the engine's sandbox cannot start and is switched off.
    static void prepareEngine();

    // Shows the page at `url`.
    void loadRequest(const QUrl &url);
    // Shows `html`; relative links in it resolve against `baseUrl`.
    void loadHTMLString(const QString &html, const QUrl &baseUrl = QUrl());
    // Asks for the current page again.
    Q_INVOKABLE void reload();

    QUrl url() const { return m_url; }
    QString html() const { return m_html; }
    QUrl baseUrl() const { return m_baseUrl; }
    // Grows with every request, so the view knows to load even the same page again.
    int requestNumber() const { return m_requestNumber; }
    LoadState loadState() const { return m_loadState; }
    bool isLoading() const { return m_loadState == Loading; }
    // The shown page's own title; empty until one has loaded.
    QString title() const { return m_title; }
    QString errorString() const { return m_errorString; }

    // What the drawn view reports.
    Q_INVOKABLE void reportStarted();
    Q_INVOKABLE void reportFinished(const QString &title);
    Q_INVOKABLE void reportFailed(const QString &errorString);

signals:
    void requestChanged();
    void loadStateChanged();
    void titleChanged();
    void webViewDidStartLoad();
    void webViewDidFinishLoad();
    void didFailLoadWithError(const QString &errorString);

private:
    void request(const QUrl &url, const QString &html, const QUrl &baseUrl);
    void setLoadState(LoadState state);
    void setTitle(const QString &title);

    QUrl m_url;
    QString m_html;
    QUrl m_baseUrl;
    int m_requestNumber = 0;
    LoadState m_loadState = NotLoaded;
    QString m_title;
    QString m_errorString;
};

} // namespace platform
