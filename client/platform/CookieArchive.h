#pragma once

#include <QByteArray>
#include <QList>
#include <QNetworkCookie>

namespace platform {

// The archived form of a cookie list, kept under the defaults key "userCookies": a QDataStream of
// each cookie's full Set-Cookie form (name, value, domain, path, expiry, Secure, HttpOnly,
// SameSite) behind a magic number and a format version.
class CookieArchive
{
public:
    // Cookies whose Set-Cookie form would not read back as the same cookie (an empty name, a value
    // holding ';' or a line break, as only code can make them) are left out.
    static QByteArray archive(const QList<QNetworkCookie> &cookies);

    // The archived cookies in their order; an empty list for anything that is not a whole, intact
    // archive of this format (never a part of one).
    static QList<QNetworkCookie> unarchive(const QByteArray &data);

    static constexpr quint32 magic = 0x54434b41; // "TCKA"
    static constexpr quint16 version = 1;
};

} // namespace platform
