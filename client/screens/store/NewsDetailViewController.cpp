#include "screens/store/NewsDetailViewController.h"

#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/UrlOpener.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTextDocument>

namespace {

constexpr int PageTimeoutMs = 15000;

QUrl &pageAddressForNewPages()
{
    static QUrl address(QStringLiteral("https://www.baidu.com/"));
    return address;
}

} // namespace

QUrl NewsDetailViewController::defaultPageAddress()
{
    return pageAddressForNewPages();
}

void NewsDetailViewController::setDefaultPageAddress(const QUrl &address)
{
    pageAddressForNewPages() = address;
}

NewsDetailViewController::NewsDetailViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_pageAddress(defaultPageAddress())
    , m_webView(new QNetworkAccessManager(this))
    , m_shareView(new ICShareView(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/store/NewsDetailView.qml")));
    m_webView->setTransferTimeout(PageTimeoutMs);
}

NewsDetailViewController::~NewsDetailViewController()
{
    if (m_reply)
        m_reply->abort();
}

void NewsDetailViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("资讯详情"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBackBlack"), QString());
    setNavRightDefaultItemWithImageIcon(QStringLiteral("common_share"), QString());
}

void NewsDetailViewController::setLoadViewAction()
{
    loadRequest();
}

void NewsDetailViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void NewsDetailViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void NewsDetailViewController::setNavRightAction()
{
    // "咨询公告" is written so on purpose, unlike the list's title.
    m_shareView->setShareTitle(QStringLiteral("咨询公告"), QStringLiteral("内容"), QString(),
                               m_pageAddress.toString());
    m_shareView->showView();
}

void NewsDetailViewController::loadRequest()
{
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
    }
    QNetworkRequest request(m_pageAddress);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    m_reply = m_webView->get(request);
    webViewDidStartLoad();
    QNetworkReply *reply = m_reply;
    connect(reply, &QNetworkReply::finished, this, [this, reply] {
        reply->deleteLater();
        if (reply->error() == QNetworkReply::NoError)
            webViewDidFinishLoad(reply->readAll());
        else
            didFailLoadWithError();
    });
}

void NewsDetailViewController::openInBrowser()
{
    platform::UrlOpener::shared().openURL(m_pageAddress);
}

void NewsDetailViewController::webViewDidStartLoad()
{
    m_pageTitle.clear();
    setLoadState(Loading);
    platform::Hud::shared().showWithStatus(QStringLiteral("正在加载"));
}

void NewsDetailViewController::webViewDidFinishLoad(const QByteArray &html)
{
    QTextDocument page;
    page.setHtml(QString::fromUtf8(html));
    m_pageTitle = page.metaInformation(QTextDocument::DocumentTitle).trimmed();
    setLoadState(Loaded);
    platform::Hud::shared().dismiss();
}

void NewsDetailViewController::didFailLoadWithError()
{
    m_pageTitle.clear();
    setLoadState(Failed);
    platform::Hud::shared().showErrorWithStatus(QStringLiteral("加载失败"));
}

void NewsDetailViewController::setLoadState(LoadState state)
{
    m_loadState = state;
    emit loadStateChanged();
}
