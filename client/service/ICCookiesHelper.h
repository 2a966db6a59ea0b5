#pragma once

#include <QString>

// The store service's cookies across launches: archived under the defaults key "userCookies"
// after sign-in, put back into the shared cookie store at launch, wiped at sign-out.
class ICCookiesHelper
{
public:
    ICCookiesHelper() = delete;

    static const QString cookiesKey; // "userCookies"
    static const QString cartNumKey; // "cartnum"
    static const QString cartNumCookieName; // "cart_num"

    // Archives the shared store's cookies for `url` under "userCookies" and synchronises.
    static void saveCookiesWithUrl(const QString &url);
    // Puts the archived cookies, in order, into the shared store (nothing when none are stored).
    static void setCookies();
    // Deletes every cookie of the shared store (all hosts), removes "userCookies", synchronises.
    static void deleteCookies();
    // Despite its name: true when "userCookies" holds a value, false when it does not.
    static bool isEmptyCookies();

    // After a request to ApiBaseUrl() + `path` succeeded: the first "cart_num" cookie for that
    // address goes into "cartnum" (then synchronised); without one "cartnum" stays as it was.
    // Answers whether a cookie was found.
    static bool updateCartNumFromCookiesForPath(const QString &path);
};
