#include "platform/ui/CookieJarProxy.h"

#include <QMetaObject>
#include <QSemaphore>
#include <QThread>

#include <memory>

namespace platform {

CookieJarProxy::CookieJarProxy(QNetworkCookieJar *store, QObject *parent)
    : QNetworkCookieJar(parent)
    , m_store(store)
{ }

QList<QNetworkCookie> CookieJarProxy::cookiesForUrl(const QUrl &url) const
{
    QNetworkCookieJar *store = m_store.data();
    if (!store)
        return {};
    if (QThread::currentThread() == store->thread())
        return store->cookiesForUrl(url);

    struct Answer
    {
        QSemaphore ready;
        QList<QNetworkCookie> cookies;
    };
    auto answer = std::make_shared<Answer>();
    QMetaObject::invokeMethod(
            store,
            [store, url, answer] {
                answer->cookies = store->cookiesForUrl(url);
                answer->ready.release();
            },
            Qt::QueuedConnection);
    if (!answer->ready.tryAcquire(1, ReadTimeoutMs))
        return {};
    return answer->cookies;
}

bool CookieJarProxy::setCookiesFromUrl(const QList<QNetworkCookie> &cookies, const QUrl &url)
{
    return forward([cookies, url](QNetworkCookieJar *store) {
        return store->setCookiesFromUrl(cookies, url);
    });
}

bool CookieJarProxy::insertCookie(const QNetworkCookie &cookie)
{
    return forward([cookie](QNetworkCookieJar *store) { return store->insertCookie(cookie); });
}

bool CookieJarProxy::updateCookie(const QNetworkCookie &cookie)
{
    return forward([cookie](QNetworkCookieJar *store) { return store->updateCookie(cookie); });
}

bool CookieJarProxy::deleteCookie(const QNetworkCookie &cookie)
{
    return forward([cookie](QNetworkCookieJar *store) { return store->deleteCookie(cookie); });
}

// Changes run in the store's thread; from another thread they are posted and counted as done.
bool CookieJarProxy::forward(const std::function<bool(QNetworkCookieJar *)> &change)
{
    QNetworkCookieJar *store = m_store.data();
    if (!store)
        return false;
    if (QThread::currentThread() == store->thread())
        return change(store);
    QMetaObject::invokeMethod(
            store, [store, change] { change(store); }, Qt::QueuedConnection);
    return true;
}

} // namespace platform
