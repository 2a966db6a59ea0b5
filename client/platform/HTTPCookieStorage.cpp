#include "platform/HTTPCookieStorage.h"

#include <QNetworkAccessManager>

namespace platform {

Q_GLOBAL_STATIC(HTTPCookieStorage, sharedStorage)

HTTPCookieStorage *HTTPCookieStorage::shared()
{
    return sharedStorage();
}

QList<QNetworkCookie> HTTPCookieStorage::cookiesForURL(const QUrl &url) const
{
    return cookiesForUrl(url);
}

QList<QNetworkCookie> HTTPCookieStorage::cookies() const
{
    return allCookies();
}

void HTTPCookieStorage::setCookie(const QNetworkCookie &cookie)
{
    insertCookie(cookie);
}

bool HTTPCookieStorage::deleteCookie(const QNetworkCookie &cookie)
{
    return QNetworkCookieJar::deleteCookie(cookie);
}

void HTTPCookieStorage::attachTo(QNetworkAccessManager *manager)
{
    if (!manager)
        return;
    HTTPCookieStorage *storage = shared();
    manager->setCookieJar(storage);
    // setCookieJar adopts the jar as a child; the shared store must outlive every manager.
    storage->setParent(nullptr);
}

} // namespace platform
