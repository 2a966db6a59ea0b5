#include "service/ICCookiesHelper.h"

#include "platform/CookieArchive.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/UserDefaults.h"
#include "util/AppConfig.h"

#include <QUrl>

using platform::CookieArchive;
using platform::HTTPCookieStorage;
using platform::UserDefaults;

const QString ICCookiesHelper::cookiesKey = QStringLiteral("userCookies");
const QString ICCookiesHelper::cartNumKey = QStringLiteral("cartnum");
const QString ICCookiesHelper::cartNumCookieName = QStringLiteral("cart_num");

void ICCookiesHelper::saveCookiesWithUrl(const QString &url)
{
    const auto cookies = HTTPCookieStorage::shared()->cookiesForURL(QUrl(url));
    UserDefaults &defaults = UserDefaults::standard();
    defaults.setObject(CookieArchive::archive(cookies), cookiesKey);
    defaults.synchronize();
}

void ICCookiesHelper::setCookies()
{
    const QVariant stored = UserDefaults::standard().objectForKey(cookiesKey);
    if (stored.typeId() != QMetaType::QByteArray || stored.toByteArray().isEmpty())
        return;
    HTTPCookieStorage *storage = HTTPCookieStorage::shared();
    for (const QNetworkCookie &cookie : CookieArchive::unarchive(stored.toByteArray()))
        storage->setCookie(cookie);
}

void ICCookiesHelper::deleteCookies()
{
    HTTPCookieStorage *storage = HTTPCookieStorage::shared();
    const QList<QNetworkCookie> all = storage->cookies();
    for (const QNetworkCookie &cookie : all)
        storage->deleteCookie(cookie);
    UserDefaults &defaults = UserDefaults::standard();
    defaults.removeObjectForKey(cookiesKey);
    defaults.synchronize();
}

bool ICCookiesHelper::isEmptyCookies()
{
    // Inverted on purpose: true when cookies ARE stored; its callers rely on this sense.
    return UserDefaults::standard().objectForKey(cookiesKey).isValid();
}

bool ICCookiesHelper::updateCartNumFromCookiesForPath(const QString &path)
{
    const QUrl url(ApiBaseUrl() + path);
    const auto cookies = HTTPCookieStorage::shared()->cookiesForURL(url);
    for (const QNetworkCookie &cookie : cookies) {
        if (cookie.name() != cartNumCookieName.toUtf8())
            continue;
        UserDefaults &defaults = UserDefaults::standard();
        defaults.setObject(QString::fromUtf8(cookie.value()), cartNumKey);
        defaults.synchronize();
        return true;
    }
    return false;
}
