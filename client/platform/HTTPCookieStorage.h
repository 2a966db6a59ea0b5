#pragma once

#include <QList>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QUrl>

class QNetworkAccessManager;

namespace platform {

// The one cookie store of the app: NetWorkHelper's network manager and the QML image loader both
// use it. Managers never own it: attach it with `attachTo`.
class HTTPCookieStorage : public QNetworkCookieJar
{
    Q_OBJECT
public:
    static HTTPCookieStorage *shared();

    QList<QNetworkCookie> cookiesForURL(const QUrl &url) const;
    QList<QNetworkCookie> cookies() const;
    // Replaces a cookie of the same name, domain and path; an expired cookie only removes it.
    void setCookie(const QNetworkCookie &cookie);
    bool deleteCookie(const QNetworkCookie &cookie) override;

    // Makes `manager` use the shared store without taking ownership of it.
    static void attachTo(QNetworkAccessManager *manager);

private:
    using QNetworkCookieJar::QNetworkCookieJar;
};

} // namespace platform
