#include "platform/ui/WebView.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <unistd.h>

namespace platform {

namespace {

const char *const ChromiumFlags = "QTWEBENGINE_CHROMIUM_FLAGS";

void switchOffSandboxForRoot()
{
    if (::geteuid() != 0)
        return;
    QByteArray flags = qgetenv(ChromiumFlags);
    if (flags.contains("--no-sandbox"))
        return;
    if (!flags.isEmpty())
        flags.append(' ');
    flags.append("--no-sandbox");
    qputenv(ChromiumFlags, flags);
}

} // namespace

WebView::WebView(QObject *parent)
    : QObject(parent)
{ }

void WebView::prepareEngine()
{
    switchOffSandboxForRoot();
    // Only what must precede the application object: with a shared OpenGL context made by the
    // application and Qt Quick drawing with OpenGL, the web engine has what it needs when the
    // first page is opened, and its libraries are loaded only then. The offscreen platform
    // (tests, snapshots) has no OpenGL; there both draw in software.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen")
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    else
        QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
}

void WebView::loadRequest(const QUrl &url)
{
    request(url, QString(), QUrl());
}

void WebView::loadHTMLString(const QString &html, const QUrl &baseUrl)
{
    request(QUrl(), html, baseUrl);
}

void WebView::reload()
{
    if (m_requestNumber > 0)
        request(m_url, m_html, m_baseUrl);
}

void WebView::request(const QUrl &url, const QString &html, const QUrl &baseUrl)
{
    m_url = url;
    m_html = html;
    m_baseUrl = baseUrl;
    ++m_requestNumber;
    emit requestChanged();
}

void WebView::reportStarted()
{
    m_errorString.clear();
    setLoadState(Loading);
    emit webViewDidStartLoad();
}

void WebView::reportFinished(const QString &title)
{
    setTitle(title);
    setLoadState(Loaded);
    emit webViewDidFinishLoad();
}

void WebView::reportFailed(const QString &errorString)
{
    m_errorString = errorString;
    setTitle(QString());
    setLoadState(Failed);
    emit didFailLoadWithError(errorString);
}

void WebView::setLoadState(LoadState state)
{
    if (m_loadState == state)
        return;
    m_loadState = state;
    emit loadStateChanged();
}

void WebView::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    emit titleChanged();
}

} // namespace platform
