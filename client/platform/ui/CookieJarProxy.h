#pragma once

#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QPointer>

#include <functional>

namespace platform {

// A cookie jar for a network manager living in another thread (QML loads images on its own
// thread): it reads and writes the shared cookie store in the store's thread, so the store is only
// ever touched there. A read that the store's thread cannot answer in time (the app is shutting
// down) finds no cookies.
class CookieJarProxy : public QNetworkCookieJar
{
    Q_OBJECT
public:
    explicit CookieJarProxy(QNetworkCookieJar *store, QObject *parent = nullptr);

    QList<QNetworkCookie> cookiesForUrl(const QUrl &url) const override;
    bool setCookiesFromUrl(const QList<QNetworkCookie> &cookies, const QUrl &url) override;
    bool insertCookie(const QNetworkCookie &cookie) override;
    bool updateCookie(const QNetworkCookie &cookie) override;
    bool deleteCookie(const QNetworkCookie &cookie) override;

    static constexpr int ReadTimeoutMs = 1000;

private:
    bool forward(const std::function<bool(QNetworkCookieJar *)> &change);

    QPointer<QNetworkCookieJar> m_store;
};

} // namespace platform
